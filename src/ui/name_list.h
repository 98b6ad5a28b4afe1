#pragma once

#include <QIcon>
#include <QListView>
#include <string>
#include <vector>

namespace ui {

class NameModel;

/// A list of file system names, quick with any number of them. Names too long for it are cut in
/// the middle and whole in the tool tip.
class NameList final : public QListView {
    Q_OBJECT

 public:
    /// Each name stands behind `icon`, unless that is null.
    NameList(const QIcon& icon, QWidget* parent);

    /// Shows `names`, the bytes that the file system has, with none of them selected.
    void ShowNames(std::vector<std::string> names);
    /// What stands in the list while it is empty.
    void SetEmptyText(const QString& text);

 signals:
    /// The user selected a name, by its index.
    void Chosen(int index);
    /// A double-click, or the Enter key.
    void Opened(int index);
    /// The Backspace key: one folder up.
    void Up();

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {1, 1}; }

 private:
    NameModel* names_;
    QString emptyText_;
};

}  // namespace ui
