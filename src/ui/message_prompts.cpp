#include "ui/message_prompts.h"

#include <QMessageBox>

namespace ui {

void MessagePrompts::Warn(const std::string& text)
{
    const QString title = window_ != nullptr ? window_->windowTitle() : QString();
    QMessageBox box(QMessageBox::Warning, title, QString::fromStdString(text), QMessageBox::Ok,
                    window_);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

bool MessagePrompts::Ask(const std::string& text, const std::string& title)
{
    QMessageBox box(QMessageBox::Question, QString::fromStdString(title),
                    QString::fromStdString(text), QMessageBox::Yes | QMessageBox::No, window_);
    box.setDefaultButton(QMessageBox::No);
    box.setTextFormat(Qt::PlainText);
    return box.exec() == QMessageBox::Yes;
}

}  // namespace ui
