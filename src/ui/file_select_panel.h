#pragma once

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <array>
#include <optional>

#include "editor/editor.h"
#include "fountain/scene_layout.h"
#include "ui/cover_frame.h"
#include "ui/name_list.h"

namespace ui {

/// `fraFileSelect`: where a show is chosen to be opened, or a name to save it under.
class FileSelectPanel final : public CoverFrame {
    Q_OBJECT

 public:
    /// `editor` outlives the panel.
    FileSelectPanel(editor::Editor& editor, QWidget* parent);

    /// Takes its place in the window.
    void Fit(fountain::ScaleFactors scale);
    /// Shows the editor's file selection panel as it is now: opens, follows, closes.
    void Refresh();

 signals:
    void Operated();

 protected:
    void Answer(int button) override { cmdFileSelect_Click(button); }
    [[nodiscard]] bool CancelHasFocus() const override { return cmdFileSelect_[1]->hasFocus(); }

 private:
    void BuildTexts();
    void BuildLists();
    void BuildActions();
    void ShowPanel(const editor::FilePanel& panel);
    void ShowVolumes(const editor::FilePanel& panel);
    void ShowSummary();
    void ShowFolder();
    void EnterFolder(int index);
    void EnterVolume(int index);
    void ShowNote(const QString& note);
    void TellUnless(bool read, const QString& what);
    void cmdFileSelect_Click(int index);
    void Open();

    editor::Editor& editor_;
    fountain::ScaleFactors scale_{1, 1};
    QLabel* lblFileTitle_ = nullptr;
    QLabel* lblFileNote_ = nullptr;
    QLabel* lblFolder_ = nullptr;
    QLabel* lblFileSelect_ = nullptr;
    QLabel* lblFileName_ = nullptr;
    QComboBox* drvFileSelect_ = nullptr;
    NameList* dirFileSelect_ = nullptr;
    NameList* filFileSelect_ = nullptr;
    QComboBox* cboFileSelect_ = nullptr;
    QLineEdit* txtFileSelect_ = nullptr;
    std::array<QPushButton*, 2> cmdFileSelect_{};
    std::optional<editor::FilePanel> shown_;
};

}  // namespace ui
