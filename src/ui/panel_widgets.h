#pragma once

#include <QAbstractButton>
#include <QProxyStyle>
#include <QSpinBox>
#include <QStringList>

#include "fountain/colors.h"

namespace ui {

/// Marks whatever differs from what is stored: the corner of a control, the line that tells it.
void PaintChangedMark(QPainter& painter, const QRectF& corner);

/// A label of the panel that can be clicked. It shows what it is told and keeps nothing: a click
/// is announced, and what comes of it is shown by the next refresh.
class PanelButton final : public QAbstractButton {
    Q_OBJECT

 public:
    enum class Face { Toggle, Lamp, Target, Command };

    PanelButton(Face face, QWidget* parent);

    /// Draws the arrow of a movement of the lights, 0..3 as `lblLightMotion`, in place of a text.
    void SetArrow(int movement);
    /// The ink of an unlit lamp: it hints at the light.
    void SetUnlitInk(const QColor& ink) { unlitInk_ = ink; }
    void Show(fountain::Color color, const QString& caption, bool lit, bool changed);
    /// A target can be clicked in erase mode only; otherwise it is the name of its device.
    void ShowTarget(bool erasing);

 signals:
    /// An arrow key asks for the neighbour on that side.
    void Left(int dx, int dy);

 protected:
    void nextCheckState() override {}
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] QSize sizeHint() const override { return {25, 20}; }

 private:
    void PaintGround(QPainter& painter) const;
    void PaintCaption(QPainter& painter) const;
    [[nodiscard]] QColor Ink() const;

    Face face_;
    int arrow_ = -1;
    QColor color_;
    QColor unlitInk_{84, 86, 98};
    bool changed_ = false;
    bool erasing_ = false;
};

/// Width of the arrows of a spin box of this size.
[[nodiscard]] int ArrowWidth(QSize box);

/// Spin boxes of the panel: their arrows grow with the window, and Ctrl does not multiply.
class PanelStyle final : public QProxyStyle {
 public:
    explicit PanelStyle(QObject* parent);

    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                       SubControl part, const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                                QStyleHintReturn* returnData) const override;
};

/// A spin box that keeps no value of its own: every step and every number typed is announced, and
/// what has become of it is shown by the next refresh.
class PanelSpinBox : public QSpinBox {
    Q_OBJECT

 public:
    PanelSpinBox(QStyle* style, QWidget* parent);

    /// Words in place of the numbers from 0 on.
    void SetWords(const QStringList& words);
    void Show(int value, bool changed);

    void stepBy(int steps) override;

 signals:
    void Stepped(int direction);
    void Typed(int value);

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] QString textFromValue(int value) const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {1, 1}; }

 private:
    QStringList words_;
    bool changed_ = false;
};

/// Two arrows with the size of their step; for a value that is shown elsewhere.
class StepArrows final : public PanelSpinBox {
    Q_OBJECT

 public:
    StepArrows(QStyle* style, const QString& step, QWidget* parent);

 protected:
    [[nodiscard]] QString textFromValue(int) const override { return step_; }
    [[nodiscard]] StepEnabled stepEnabled() const override
    {
        return StepUpEnabled | StepDownEnabled;
    }

 private:
    QString step_;
};

}  // namespace ui
