#pragma once

#include <QListView>
#include <utility>
#include <vector>

#include "timeline/script_list.h"
#include "ui/script_model.h"

namespace ui {

/// The rows of a script on the screen: each time with its lines below each other, all lines equally
/// high, scrolled by lines. What is laid out is one number a row, so that the largest show costs
/// nothing that is felt.
///
/// It lays out, paints and scrolls by itself; a list view it is because that is how screen readers
/// know a list.
class ScriptRows final : public QListView {
    Q_OBJECT

 public:
    ScriptRows(ScriptModel& model, QWidget* parent);

    /// Where the show stands: on a row, or behind it (-1: ahead of all).
    struct Mark {
        int row = -1;
        bool on = false;

        friend bool operator==(const Mark&, const Mark&) = default;
    };
    void SetMark(Mark mark);
    [[nodiscard]] Mark Marked() const { return mark_; }
    /// The marked row is wholly in view.
    [[nodiscard]] bool ShowsMark() const;
    /// Scrolls so that the marked row and what follows are in view. A row that is in view in part
    /// is only brought in, unless pages are to be turned.
    void RevealMark(bool turnPage);
    /// Scrolls so that a line of a row is the first in view.
    void SetTop(int row, int line);
    /// The row at the top of the view (-1 when there is none) and its first line in view.
    [[nodiscard]] std::pair<int, int> Top() const;
    /// What stands there when there are no rows.
    void SetEmptyText(const QString& text);

    [[nodiscard]] QRect visualRect(const QModelIndex& index) const override;
    [[nodiscard]] QModelIndex indexAt(const QPoint& point) const override;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    void doItemsLayout() override;
    void reset() override;

 signals:
    /// A row was clicked or the Enter key pressed on it.
    void RowChosen(int row);
    /// The user has moved what is in view.
    void MovedByHand();

 protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void updateGeometries() override;
    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                     const QList<int>& roles) override;
    void rowsInserted(const QModelIndex& parent, int start, int end) override;
    void rowsAboutToBeRemoved(const QModelIndex& parent, int start, int end) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;
    [[nodiscard]] QModelIndex moveCursor(CursorAction action,
                                         Qt::KeyboardModifiers modifiers) override;
    void setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) override;
    [[nodiscard]] QRegion visualRegionForSelection(const QItemSelection& selection) const override;
    [[nodiscard]] bool isIndexHidden(const QModelIndex&) const override { return false; }
    [[nodiscard]] int horizontalOffset() const override { return 0; }
    [[nodiscard]] int verticalOffset() const override;

 private:
    /// Where the columns begin, and the fonts.
    struct Columns {
        int line = 1;  // height
        int time = 0;
        int codes = 0;
        int text = 0;
        bool showsCodes = true;
        QFont bold;
        QFont codesFont;
    };
    /// A row that is painted, and its lines that are in view.
    struct RowInView {
        int row = 0;
        int first = 0;
        QRect rect;  // of those lines
    };

    void Measure();
    [[nodiscard]] const std::vector<int>& Starts() const;
    [[nodiscard]] int RowAtLine(int line) const;
    [[nodiscard]] int LinesInView() const;
    [[nodiscard]] int LineAt(int y) const;
    void HoldTop();
    void MoveCurrent(int rows);
    void UpdateMark();
    bool ShowLineTip(const QPoint& at, const QPoint& globalAt);

    void PaintEmpty(QPainter& painter) const;
    void PaintRow(QPainter& painter, const RowInView& view) const;
    void PaintLine(QPainter& painter, const timeline::ScriptLine& line, const QRect& rect) const;
    void PaintFinding(QPainter& painter, const timeline::ScriptLine& line, const QRect& rect) const;
    void PaintMark(QPainter& painter) const;
    [[nodiscard]] QRect TextRect(const timeline::ScriptLine& line, const QRect& rect) const;
    [[nodiscard]] const QFont& FontOf(const timeline::ScriptLine& line) const;

    const timeline::ScriptList& list_;
    Columns columns_;
    QString emptyText_;
    Mark mark_;
    int pressedRow_ = -1;
    // The line at which each row begins, and behind the last their number; made when asked for.
    mutable std::vector<int> starts_;
    mutable bool startsKnown_ = false;
    // What stays at the top while rows change elsewhere.
    QPersistentModelIndex topRow_;
    int topLine_ = 0;
    bool holdsTop_ = false;
};

}  // namespace ui
