#include "ui/spoken_value.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QWidget>

namespace ui {
namespace {

class Access final : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
    Access(QWidget* widget, SpokenValue* value)
        : QAccessibleWidget(widget, QAccessible::Slider), value_(value)
    {
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    [[nodiscard]] QString text(QAccessible::Text type) const override
    {
        return type == QAccessible::Value ? value_->ValueText() : QAccessibleWidget::text(type);
    }

    [[nodiscard]] QVariant currentValue() const override { return value_->Value(); }
    [[nodiscard]] QVariant minimumValue() const override { return value_->LeastValue(); }
    [[nodiscard]] QVariant maximumValue() const override { return value_->MostValue(); }
    [[nodiscard]] QVariant minimumStepSize() const override { return value_->ValueStep(); }
    void setCurrentValue(const QVariant& value) override
    {
        bool isNumber = false;
        const double number = value.toDouble(&isNumber);
        if (isNumber)
            value_->AskForValue(number);
    }

 private:
    SpokenValue* value_;
};

QAccessibleInterface* AccessOf(const QString&, QObject* object)
{
    auto* value = dynamic_cast<SpokenValue*>(object);
    auto* widget = qobject_cast<QWidget*>(object);
    return value != nullptr && widget != nullptr ? new Access(widget, value) : nullptr;
}

}  // namespace

void InstallSpokenValues()
{
    static const bool kInstalled = [] {
        QAccessible::installFactory(AccessOf);
        return true;
    }();
    static_cast<void>(kInstalled);
}

}  // namespace ui
