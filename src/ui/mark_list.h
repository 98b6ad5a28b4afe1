#pragma once

#include <QListWidget>

#include "timeline/marks.h"

namespace ui {

/// `lstMarks`: the marks in one row, in the order of their times.
class MarkList final : public QListWidget {
    Q_OBJECT

 public:
    explicit MarkList(QWidget* parent);

    /// Announces nothing. The selected mark is scrolled into sight when another one is selected.
    void ShowMarks(const timeline::Marks& marks);

 signals:
    /// The user selected a mark, by its index.
    void Chosen(int index);
    /// The user wants to go to a mark: a double-click or the Enter key.
    void Opened(int index);

 protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(
        const QModelIndex& index, const QEvent* event) const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {1, 1}; }

 private:
    timeline::Marks shown_;
};

}  // namespace ui
