#pragma once

#include <QAbstractButton>
#include <QPainterPath>

namespace ui {

enum class TransportIcon {
    Previous,
    Play,
    Pause,
    Stop,
    Listen,
    AddMark,
    PreviousMark,
    NextMark,
    ClearMarks
};

/// The icon on a square of 24 x 24, to be filled.
[[nodiscard]] QPainterPath IconPath(TransportIcon icon);

/// A button of a transport row. Its icon is drawn, so that it is crisp at every size.
class TransportButton final : public QAbstractButton {
    Q_OBJECT

 public:
    TransportButton(TransportIcon icon, QWidget* parent);

    void SetTransportIcon(TransportIcon icon);
    [[nodiscard]] TransportIcon ShownIcon() const { return icon_; }

 protected:
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] QSize sizeHint() const override { return {42, 34}; }

 private:
    TransportIcon icon_;
};

}  // namespace ui
