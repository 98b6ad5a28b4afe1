#pragma once

#include <QAbstractSlider>

namespace ui {

/// The slim bar under the view. Its value is the current time in tenths of a second; a change by
/// the user is announced by `valueChanged`, as of any slider.
class PositionBar final : public QAbstractSlider {
    Q_OBJECT

 public:
    explicit PositionBar(QWidget* parent);

    /// Shows a time of a piece, both in ms; announces nothing.
    void ShowPosition(std::int32_t time, std::int32_t length);

    /// The tenth of a second under `x`, in widget coordinates.
    [[nodiscard]] int TenthAt(double x) const;

 protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    [[nodiscard]] QSize sizeHint() const override { return {1024, 14}; }

 private:
    double share_ = 0;  // of the piece that is over
};

}  // namespace ui
