#include "ui/message_prompts.h"

#include <QMessageBox>

#include "ui/dialog_look.h"

namespace ui {
namespace {

QString CaptionOf(const QWidget* window)
{
    return window != nullptr ? window->windowTitle().remove(QStringLiteral("[*]")) : QString();
}

}  // namespace

void MessagePrompts::Warn(const std::string& text)
{
    QMessageBox box(QMessageBox::Warning, CaptionOf(window_), QString::fromStdString(text),
                    QMessageBox::Ok, window_);
    box.setTextFormat(Qt::PlainText);
    box.setFont(DialogFont(window_));
    box.exec();
}

bool MessagePrompts::Ask(const std::string& text, const std::string& title, editor::Icon icon)
{
    QMessageBox box(icon == editor::Icon::Question ? QMessageBox::Question : QMessageBox::Warning,
                    title.empty() ? CaptionOf(window_) : QString::fromStdString(title),
                    QString::fromStdString(text), QMessageBox::Yes | QMessageBox::No, window_);
    box.setDefaultButton(QMessageBox::No);
    box.setTextFormat(Qt::PlainText);
    box.setFont(DialogFont(window_));
    return box.exec() == QMessageBox::Yes;
}

}  // namespace ui
