#include "ui/message_prompts.h"

#include <QLabel>
#include <QMessageBox>
#include <algorithm>

#include "ui/dialog_look.h"

namespace ui {
namespace {

constexpr int kFrameButtons = 4;  // each as wide as a line is high

QString CaptionOf(const QWidget* window)
{
    return window != nullptr ? window->windowTitle().remove(QStringLiteral("[*]")) : QString();
}

// The box would break lines at a width that is meant for small letters, and a short question would
// cut the title, which tells what it is about.
void Fit(QMessageBox& box, const QWidget* window)
{
    box.setTextFormat(Qt::PlainText);
    box.setFont(DialogFont(window));
    auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    if (label == nullptr || window == nullptr)
        return;
    QFont bold = box.font();
    bold.setBold(true);  // as many frames show the title, beside their own buttons
    const QFontMetrics title(bold);
    int longest = title.horizontalAdvance(box.windowTitle()) + kFrameButtons * title.height();
    for (const QString& line : box.text().split(u'\n'))
        longest = std::max(longest, label->fontMetrics().horizontalAdvance(line));
    label->setMinimumWidth(std::min(longest, window->width() / 2) + 1);
}

// Without a window manager nobody else gives the keys back to the window.
int Answer(QMessageBox& box, QWidget* window)
{
    Fit(box, window);
    const int answer = box.exec();
    if (window != nullptr)
        window->activateWindow();
    return answer;
}

}  // namespace

void MessagePrompts::Warn(const std::string& text)
{
    QMessageBox box(QMessageBox::Warning, CaptionOf(window_), QString::fromStdString(text),
                    QMessageBox::Ok, window_);
    Answer(box, window_);
}

bool MessagePrompts::Ask(const std::string& text, const std::string& title, editor::Icon icon)
{
    QMessageBox box(icon == editor::Icon::Question ? QMessageBox::Question : QMessageBox::Warning,
                    title.empty() ? CaptionOf(window_) : QString::fromStdString(title),
                    QString::fromStdString(text), QMessageBox::Yes | QMessageBox::No, window_);
    box.setDefaultButton(QMessageBox::No);
    return Answer(box, window_) == QMessageBox::Yes;
}

}  // namespace ui
