#pragma once

#include <QWidget>
#include <vector>

#include "editor/editor.h"
#include "fountain/scene_layout.h"
#include "ui/panel_form.h"
#include "ui/panel_widgets.h"

namespace ui {

/// `fraControls`: every control of the panel. It shows the editor's panel and hands the editor
/// what the user does to it.
class ControlPanel final : public QWidget {
    Q_OBJECT

 public:
    /// `editor` outlives the panel.
    ControlPanel(editor::Editor& editor, QWidget* parent);

    /// Arranges the controls in the panel's place of now, in the largest letters that leave every
    /// text whole; all of them grow alike.
    void Fit(fountain::ScaleFactors scale);

    /// Shows the panel as the editor has it.
    void Refresh();

    /// The controls that Tab goes through, in order.
    [[nodiscard]] std::vector<QWidget*> TabOrder() const;

    [[nodiscard]] QStyle* SpinBoxStyle() { return style_; }

 signals:
    /// The user has operated a control.
    void Operated();

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    struct Item {
        const PanelControl* control;
        QWidget* widget;
        const panel::Spinner* spinner = nullptr;
        const panel::ColorLabel* color = nullptr;
        const panel::CaptionLabel* caption = nullptr;
    };

    QWidget* Build(const PanelControl& control);
    QWidget* BuildLabel(const PanelControl& control);
    QWidget* BuildLevel(const PanelControl& control);
    QWidget* BuildButton(const PanelControl& control);
    QWidget* BuildRotateTime(const PanelControl& control);
    void Click(const PanelControl& control);
    void RefreshItem(const Item& item);
    void FocusNeighbour(const QWidget* from, int dx, int dy);

    editor::Editor& editor_;
    PanelStyle* style_;
    std::vector<Item> items_;
    fountain::ScaleFactors scale_;
};

}  // namespace ui
