#include "ui/script_view.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QSignalBlocker>
#include <QToolButton>
#include <algorithm>
#include <utility>

#include "ui/design_form.h"
#include "ui/script_model.h"
#include "ui/script_rows.h"

namespace ui {
namespace {

// Up to here a show is looked through within a millisecond: at once after each edit.
constexpr std::int32_t kQuicklyChecked = 100'000;  // commands
constexpr int kCheckDelay = 150;                   // ms
constexpr int kMostLetters = 200;
constexpr int kLetters = 12;  // design pixels
constexpr QColor kHint(104, 106, 116);

QString Counted(std::int32_t count, const char* one, const char* many)
{
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    return english.toString(count) + QLatin1Char(' ') + QLatin1String(count == 1 ? one : many);
}

}  // namespace

ScriptView::ScriptView(QWidget* parent) : QWidget(parent)
{
    setAccessibleName(QStringLiteral("Script"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(4);
    BuildFilter();
    BuildRows();
    BuildCounts();
    auto* counts = new QHBoxLayout;
    counts->setSpacing(4);
    counts->addWidget(lblTimes_, 1);
    counts->addWidget(cmdFollow_);
    counts->addWidget(cmdProblems_);
    layout->addWidget(txtFilter_);
    layout->addLayout(counts);
    layout->addWidget(lstScript_, 1);
    for (const auto& [first, second] : {std::pair<QWidget*, QWidget*>{txtFilter_, cmdFollow_},
                                        {cmdFollow_, cmdProblems_},
                                        {cmdProblems_, lstScript_}})
        setTabOrder(first, second);
    checkLater_.setSingleShot(true);
    checkLater_.setInterval(kCheckDelay);
    connect(&checkLater_, &QTimer::timeout, this, &ScriptView::CheckShow);
    Fit({});
    ShowCounts();
}

void ScriptView::BuildFilter()
{
    txtFilter_ = new QLineEdit(this);
    txtFilter_->setObjectName(QStringLiteral("txtScriptFilter"));
    txtFilter_->setAccessibleName(QStringLiteral("Filter of the script"));
    txtFilter_->setPlaceholderText(QStringLiteral("Filter: ring 3, peacock, over 11"));
    txtFilter_->setToolTip(
        QStringLiteral("Shows the times that have all of what is typed: words (peacock), a device "
                       "(ring 3), codes (003-020),\na time (1:05), more commands than a number "
                       "(over 11), problems, \"words as they stand\""));
    txtFilter_->setClearButtonEnabled(true);
    txtFilter_->setMaxLength(kMostLetters);
    QPalette palette;
    palette.setColor(QPalette::PlaceholderText, kHint);
    txtFilter_->setPalette(palette);
    txtFilter_->installEventFilter(this);
    connect(txtFilter_, &QLineEdit::textChanged, this, &ScriptView::ApplyFilter);
}

void ScriptView::BuildRows()
{
    model_ = new ScriptModel(this);
    lstScript_ = new ScriptRows(*model_, this);
    lstScript_->setObjectName(QStringLiteral("lstScript"));
    lstScript_->setAccessibleName(QStringLiteral("Times and their commands"));
    connect(lstScript_, &ScriptRows::RowChosen, this, &ScriptView::RowChosen);
    connect(model_, &QAbstractItemModel::modelAboutToBeReset, this, &ScriptView::RememberPlace);
    connect(model_, &QAbstractItemModel::modelReset, this, &ScriptView::RestorePlace);
    connect(lstScript_, &ScriptRows::MovedByHand, this, [this] {
        following_ = false;
        // What is in view changes only after this.
        QMetaObject::invokeMethod(this, &ScriptView::ShowFollowing, Qt::QueuedConnection);
    });
}

QToolButton* ScriptView::AddButton(const char* name, const char* caption, const char* toolTip)
{
    auto* button = new QToolButton(this);
    button->setObjectName(QString::fromLatin1(name));
    button->setText(QString::fromLatin1(caption));
    button->setAccessibleName(QString::fromLatin1(caption));
    button->setToolTip(QString::fromLatin1(toolTip));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->hide();
    return button;
}

void ScriptView::BuildCounts()
{
    lblTimes_ = new QLabel(this);
    lblTimes_->setObjectName(QStringLiteral("lblScriptTimes"));
    lblTimes_->setAccessibleName(QStringLiteral("Times in the script"));
    lblTimes_->setToolTip(QStringLiteral("How many times the list shows"));
    lblTimes_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    cmdFollow_ = AddButton("cmdScriptFollow", "Follow", "Back to the current time");
    cmdProblems_ = AddButton("cmdScriptProblems", "", "Shows the times with problems only, or all");
    cmdProblems_->setCheckable(true);
    connect(cmdFollow_, &QToolButton::clicked, this, [this] {
        following_ = true;
        lstScript_->RevealMark(true);
        ShowFollowing();
    });
    connect(cmdProblems_, &QToolButton::clicked, txtFilter_, [this](bool checked) {
        txtFilter_->setText(checked ? QStringLiteral("problems") : QString());
    });
}

void ScriptView::ShowChoreography(const document::Choreography& choreography, std::uint64_t version,
                                  std::int32_t musicLength)
{
    const bool changed = version_ != version;
    if (!changed && musicLength == musicLength_)
        return;
    version_ = version;
    musicLength_ = musicLength;
    if (changed)
        model_->ShowChoreography(choreography);
    if (model_->List().CommandTotal() <= kQuicklyChecked)
        CheckShow();
    else
        checkLater_.start();
    ShowCounts();
    MarkTime();
}

void ScriptView::CheckShow()
{
    checkLater_.stop();
    model_->CheckShow(musicLength_);
    ShowCounts();
    MarkTime();
}

void ScriptView::ShowTime(std::int32_t time, bool playing)
{
    if (time == time_ && playing == playing_)
        return;
    const bool moved = !playing && time != time_;
    if (moved || (playing && !playing_))
        following_ = true;
    time_ = time;
    playing_ = playing;
    MarkTime();
    RevealMark(playing);
}

// While the show plays the row behind which it stands is what the fountain does.
void ScriptView::MarkTime()
{
    const timeline::ScriptList& list = model_->List();
    const int row = list.RowAtOrBefore(time_);
    const bool exact = row >= 0 && list.TimeOf(row) == time_;
    lstScript_->SetMark({row, exact || (playing_ && row >= 0 && !list.IsFiltered())});
}

void ScriptView::RevealMark(bool turnPage)
{
    // By hand or by itself it has come to where the user looks.
    following_ = following_ || lstScript_->ShowsMark();
    if (following_ && !txtFilter_->hasFocus())
        lstScript_->RevealMark(turnPage);
    ShowFollowing();
}

void ScriptView::ShowFollowing()
{
    const bool follows = following_ || lstScript_->ShowsMark();
    if (cmdFollow_->isHidden() != follows)
        cmdFollow_->setVisible(!follows);
}

void ScriptView::ApplyFilter()
{
    model_->SetFilter(txtFilter_->text());
    ShowCounts();
    MarkTime();
    lstScript_->RevealMark(true);
    ShowFollowing();
}

void ScriptView::RememberPlace()
{
    const timeline::ScriptList& list = model_->List();
    const int selected = lstScript_->currentIndex().row();
    const auto [top, line] = lstScript_->Top();
    place_ = {selected < 0 ? -1 : list.TimeOf(selected), top < 0 ? -1 : list.TimeOf(top), line};
}

void ScriptView::RestorePlace()
{
    const timeline::ScriptList& list = model_->List();
    const int row = list.RowAtOrBefore(place_.selected);
    if (row >= 0 && list.TimeOf(row) == place_.selected)
        lstScript_->setCurrentIndex(model_->index(row));
    lstScript_->SetTop(list.RowAtOrBefore(place_.top), place_.topLine);
}

void ScriptView::ShowCounts()
{
    const timeline::ScriptList& list = model_->List();
    const QString times = Counted(list.TimeCount(), "time", "times");
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    lblTimes_->setText(list.IsFiltered()
                           ? english.toString(list.RowCount()) + QStringLiteral(" of ") + times
                           : times);
    const std::int32_t problems = list.ProblemCount();
    const QString caption = Counted(problems, "problem", "problems");
    cmdProblems_->setText(caption);
    cmdProblems_->setAccessibleName(caption);
    const bool asked = list.AsksForProblems();
    cmdProblems_->setChecked(asked);
    if (cmdProblems_->isHidden() != (problems == 0 && !asked))
        cmdProblems_->setVisible(problems > 0 || asked);
    if (list.TimeCount() == 0)
        lstScript_->SetEmptyText(
            QStringLiteral("There are no commands yet. What you set on the panel is listed here."));
    else
        lstScript_->SetEmptyText(
            QStringLiteral("No time has all of that. Try ring 3, peacock, "
                           "over 11, problems, 003-020 or 1:05."));
}

void ScriptView::RowChosen(int row)
{
    following_ = true;
    emit TimeChosen(model_->List().TimeOf(row));
}

void ScriptView::Fit(fountain::ScaleFactors scale)
{
    QFont letters = FormFont();
    letters.setPixelSize(std::max(1, static_cast<int>(kLetters * std::min(scale.x, scale.y))));
    if (letters != font())
        setFont(letters);
}

void ScriptView::EditFilter()
{
    txtFilter_->setFocus(Qt::ShortcutFocusReason);
    txtFilter_->selectAll();
}

void ScriptView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    layout()->activate();
    if (following_)
        lstScript_->RevealMark(false);
}

bool ScriptView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Escape:
            if (txtFilter_->text().isEmpty())
                lstScript_->setFocus(Qt::OtherFocusReason);
            txtFilter_->clear();
            return true;
        case Qt::Key_Down:
        case Qt::Key_Return:
        case Qt::Key_Enter:
            LeaveFilter();
            return true;
        default:
            return false;
    }
}

// To the next time that was found, from the current one on; behind the last to the first.
void ScriptView::LeaveFilter()
{
    const timeline::ScriptList& list = model_->List();
    if (list.RowCount() == 0)
        return;
    int row = list.RowAtOrBefore(time_);
    if (row < 0 || list.TimeOf(row) < time_)
        row = (row + 1) % list.RowCount();
    const QModelIndex index = model_->index(row);
    lstScript_->setFocus(Qt::OtherFocusReason);
    lstScript_->setCurrentIndex(index);
    lstScript_->scrollTo(index);
}

}  // namespace ui
