#include "ui/file_select_panel.h"

#include <algorithm>
#include <span>
#include <utility>

#include <QDir>
#include <QFile>
#include <QSignalBlocker>
#include <QStringList>
#include <QStyle>

#include "ui/design_form.h"

namespace ui {
namespace {

constexpr QColor kWarning(156, 68, 0);
constexpr QRectF kPlace(82, 350, 860, 348);  // from the time strip down, on the design screen
constexpr int kLongestName = 4096;

// clang-format off
constexpr std::array kControls = std::to_array<FormControl>({  // places within the frame, Tab order
    // name               x    y  width height font  sample, accessible name, tool tip
    {"lblFileTitle",      20,   9, 400,  26,  16, "", "File selection", ""},
    {"lblFileNote",      430,   9, 410,  26,  13, "", "Note", ""},
    {"lblFileName",       20, 306,  56,  30,  14, "", "File name", "The name of the show"},
    {"txtFileSelect",     78, 306, 476,  30,  15, "", "File name",
     "The name of the show, with or without its extension; Enter opens or saves it"},
    {"cmdFileSelect_0",  568, 306, 130,  30,  15, "", "", ""},
    {"cmdFileSelect_1",  710, 306, 130,  30,  15, "", "Cancel", "Close the panel (Escape)"},
    {"drvFileSelect",     20,  42, 250,  28,  14, "", "Volume",
     "The home folder and the mounted volumes"},
    {"lblFolder",         20,  73, 250,  20,  12, "", "Folder", ""},
    {"dirFileSelect",     20,  96, 250, 200,  14, "", "Folders",
     "The folders here; a double-click or Enter opens one, Backspace goes up"},
    {"filFileSelect",    284,  42, 270, 254,  14, "", "Files",
     "The files here; a click takes the name, a double-click or Enter opens or saves at once"},
    {"cboFileSelect",    568,  42, 272,  28,  14, "", "Kind of files",
     "Which files are listed, and what kind of music a show is opened with"},
    {"lblFileSelect",    568,  78, 272, 218,  12, "", "What is open now", ""},
});
// clang-format on

const FormControl& Entry(const QWidget* widget)
{
    return *std::ranges::find_if(kControls, [widget](const FormControl& control) {
        return widget->objectName() == QLatin1String(control.name);
    });
}

QString TextOf(const std::string& name)
{
    return QFile::decodeName(QByteArray::fromStdString(name));
}

QString TextOf(const std::filesystem::path& path)
{
    return TextOf(path.string());
}

template <typename T>
T* Named(T* widget, const char* name)
{
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

}  // namespace

FileSelectPanel::FileSelectPanel(editor::Editor& editor, QWidget* parent)
    : CoverFrame(parent), editor_(editor)
{
    setObjectName(QStringLiteral("fraFileSelect"));
    setAccessibleName(QStringLiteral("File selection"));
    hide();
    BuildTexts();
    BuildLists();
    BuildActions();
    DescribeControls(kControls);
}

void FileSelectPanel::BuildTexts()
{
    lblFileTitle_ =
        AddLabel(QStringLiteral("lblFileTitle"), kCoverEdge, Qt::AlignLeft | Qt::AlignVCenter);
    lblFileNote_ =
        AddLabel(QStringLiteral("lblFileNote"), kWarning, Qt::AlignRight | Qt::AlignVCenter);
    lblFolder_ = AddLabel(QStringLiteral("lblFolder"), kCoverInk, Qt::AlignLeft | Qt::AlignVCenter);
    lblFileSelect_ =
        AddLabel(QStringLiteral("lblFileSelect"), kCoverInk, Qt::AlignLeft | Qt::AlignBottom);
    lblFileName_ =
        AddLabel(QStringLiteral("lblFileName"), kCoverInk, Qt::AlignLeft | Qt::AlignVCenter);
    lblFileName_->setText(QStringLiteral("&Name:"));
}

void FileSelectPanel::BuildLists()
{
    drvFileSelect_ = Named(new QComboBox(this), "drvFileSelect");
    connect(drvFileSelect_, &QComboBox::activated, this, &FileSelectPanel::EnterVolume);

    dirFileSelect_ =
        Named(new NameList(style()->standardIcon(QStyle::SP_DirIcon), this), "dirFileSelect");
    dirFileSelect_->SetEmptyText(QStringLiteral("No folders here"));
    connect(dirFileSelect_, &NameList::Opened, this, &FileSelectPanel::EnterFolder);

    filFileSelect_ = Named(new NameList({}, this), "filFileSelect");
    connect(filFileSelect_, &NameList::Chosen, this, [this](int index) {
        editor_.txtFileSelect_Change(
            editor_.fraFileSelect().files[static_cast<std::size_t>(index)]);
        Refresh();
    });
    connect(filFileSelect_, &NameList::Opened, this, [this](int index) {
        editor_.filFileSelect_DblClick(index);
        emit Operated();
    });
    for (const NameList* list : {dirFileSelect_, filFileSelect_})
        connect(list, &NameList::Up, this, [this] {
            const std::vector<std::string>& folders = editor_.fraFileSelect().folders;
            if (!folders.empty() && folders.front() == "..")
                EnterFolder(0);
        });
}

void FileSelectPanel::BuildActions()
{
    cboFileSelect_ = Named(new QComboBox(this), "cboFileSelect");
    for (const editor::FileFilter& filter : editor::kFileFilters)
        cboFileSelect_->addItem(QString::fromLatin1(filter.caption.data(),
                                                    static_cast<qsizetype>(filter.caption.size())));
    connect(cboFileSelect_, &QComboBox::activated, this, [this](int index) {
        editor_.cboFileSelect_Click(index);
        emit Operated();
    });

    txtFileSelect_ = Named(new QLineEdit(this), "txtFileSelect");
    txtFileSelect_->setMaxLength(kLongestName);
    txtFileSelect_->setAcceptDrops(false);  // a file dropped on the panel is not a name typed
    lblFileName_->setBuddy(txtFileSelect_);
    connect(txtFileSelect_, &QLineEdit::textEdited, this, [this](const QString& text) {
        editor_.txtFileSelect_Change(QFile::encodeName(text).toStdString());
        Refresh();
    });

    for (int i = 0; i < 2; ++i) {
        auto* button = new QPushButton(QStringLiteral("&Cancel"), this);
        button->setObjectName(QStringLiteral("cmdFileSelect_%1").arg(i));
        connect(button, &QPushButton::clicked, this, [this, i] { cmdFileSelect_Click(i); });
        cmdFileSelect_[static_cast<std::size_t>(i)] = button;
    }
    cmdFileSelect_[0]->setDefault(true);
}

void FileSelectPanel::Fit(fountain::ScaleFactors scale)
{
    scale_ = scale;
    setGeometry(Scaled(kPlace, scale));
    const double smaller = std::min(scale.x, scale.y);
    for (const FormControl& control : kControls) {
        auto* widget = findChild<QWidget*>(QString::fromLatin1(control.name));
        widget->setGeometry(PlaceOf(control, scale));
        QFont family = widget == lblFileSelect_ ? CodesFont() : FormFont();
        family.setBold(widget == lblFileTitle_);
        widget->setFont(FontOf(control, {smaller, smaller}, family));
    }
    if (shown_)
        ShowPanel(*shown_);
}

void FileSelectPanel::Refresh()
{
    const editor::FilePanel& panel = editor_.fraFileSelect();
    if (!panel.visible) {
        shown_.reset();
        hide();
        return;
    }
    const bool opens = !shown_;
    if (opens)
        ShowNote({});
    if (opens || *shown_ != panel)
        ShowPanel(panel);
    if (opens)
        Open();
}

void FileSelectPanel::Open()
{
    show();
    raise();
    txtFileSelect_->setFocus();
}

void FileSelectPanel::ShowPanel(const editor::FilePanel& panel)
{
    const bool opens = panel.mode == editor::FilePanelMode::Open;
    if (!shown_ || shown_->folders != panel.folders || shown_->folder != panel.folder)
        dirFileSelect_->ShowNames(panel.folders);
    if (!shown_ || shown_->files != panel.files || shown_->folder != panel.folder)
        filFileSelect_->ShowNames(panel.files);
    shown_ = panel;
    lblFileTitle_->setText(opens ? QStringLiteral("Open a choreography")
                                 : QStringLiteral("Save the choreography as"));
    const std::string_view caption = editor::ActionCaption(panel.mode);
    const QString action =
        QString::fromLatin1(caption.data(), static_cast<qsizetype>(caption.size()));
    cmdFileSelect_[0]->setText(action);
    cmdFileSelect_[0]->setAccessibleName(QString(action).remove(u'&'));
    cmdFileSelect_[0]->setToolTip(opens ? QStringLiteral("Open this show and its music (Enter)")
                                        : QStringLiteral("Save under this name (Enter)"));
    cboFileSelect_->setCurrentIndex(panel.cboFileSelect);
    cboFileSelect_->setEnabled(panel.cboFileSelectEnabled);
    filFileSelect_->SetEmptyText(
        QStringLiteral("No %1 files in this folder").arg(cboFileSelect_->currentText()));
    const QString name = TextOf(panel.txtFileSelect);
    if (txtFileSelect_->text() != name)
        txtFileSelect_->setText(name);
    ShowVolumes(panel);
    ShowFolder();
    ShowSummary();
}

void FileSelectPanel::ShowVolumes(const editor::FilePanel& panel)
{
    QStringList names;
    for (const std::filesystem::path& volume : panel.drvFileSelect) {
        const QString name = TextOf(volume);
        names << (name == QDir::homePath() ? QStringLiteral("Home (%1)").arg(name) : name);
    }
    QStringList shown;
    for (int i = 0; i < drvFileSelect_->count(); ++i)
        shown << drvFileSelect_->itemText(i);
    if (shown != names) {
        drvFileSelect_->clear();
        drvFileSelect_->addItems(names);
    }
    drvFileSelect_->setCurrentIndex(panel.drive);
}

void FileSelectPanel::ShowFolder()
{
    const QString folder = TextOf(shown_->folder);
    lblFolder_->setText(
        lblFolder_->fontMetrics().elidedText(folder, Qt::ElideMiddle, lblFolder_->width()));
    lblFolder_->setToolTip(folder);
    lblFolder_->setAccessibleName(QStringLiteral("Folder: ") + folder);
}

// The label is as high as its text, and ends where the file list ends.
void FileSelectPanel::ShowSummary()
{
    const QString text = QString::fromStdString(shown_->lblFileSelect).remove(u'\r').trimmed();
    QStringList lines;
    for (const QString& line : text.split(u'\n'))
        lines << lblFileSelect_->fontMetrics().elidedText(line, Qt::ElideMiddle,
                                                          lblFileSelect_->width());
    lblFileSelect_->setText(lines.join(u'\n'));
    lblFileSelect_->setToolTip(text);
    lblFileSelect_->setAccessibleName(QStringLiteral("What is open now: ") + text);
    const QRect room = PlaceOf(Entry(lblFileSelect_), scale_);
    const int height = std::min(room.height(), lblFileSelect_->sizeHint().height());
    const QRect list = filFileSelect_->geometry();
    lblFileSelect_->setGeometry(room.left(), list.bottom() + 1 - height, room.width(), height);
}

void FileSelectPanel::EnterVolume(int index)
{
    const QString volume = drvFileSelect_->itemText(index);
    editor_.drvFileSelect_Change(index);
    TellUnless(editor_.fraFileSelect().drive == index, volume);
}

void FileSelectPanel::EnterFolder(int index)
{
    const editor::FilePanel& panel = editor_.fraFileSelect();
    const QString name = TextOf(panel.folders[static_cast<std::size_t>(index)]);
    const std::filesystem::path before = panel.folder;
    editor_.dirFileSelect_Change(index);
    TellUnless(panel.folder != before, name);
    if (panel.folder != before && !panel.folders.empty())
        dirFileSelect_->setCurrentIndex(dirFileSelect_->model()->index(0, 0));
}

// The lists stand where they stood; without a word the click would seem lost.
void FileSelectPanel::TellUnless(bool read, const QString& what)
{
    ShowNote(read ? QString() : QStringLiteral("%1 cannot be read").arg(what));
    shown_->drive = -1;  // the combo box shows what was chosen, whatever came of it
    emit Operated();
}

void FileSelectPanel::ShowNote(const QString& note)
{
    lblFileNote_->setText(
        lblFileNote_->fontMetrics().elidedText(note, Qt::ElideMiddle, lblFileNote_->width()));
    lblFileNote_->setToolTip(note);
    lblFileNote_->setAccessibleName(note);
}

void FileSelectPanel::cmdFileSelect_Click(int index)
{
    if (index == 0)
        txtFileSelect_->setFocus();
    editor_.cmdFileSelect_Click(index);
    const bool saves = editor_.fraFileSelect().mode == editor::FilePanelMode::Save;
    const std::error_code& failed = editor_.LastSave().error;
    ShowNote(saves && failed
                 ? QStringLiteral("Not saved: ") + QString::fromStdString(failed.message())
                 : QString());
    emit Operated();
}

}  // namespace ui
