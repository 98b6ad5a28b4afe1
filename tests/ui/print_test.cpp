// File > Print: the preview, the pages in the file, and the ways out of a long printing.
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTimer>

#include "studio.h"
#include "timeline/script.h"
#include "ui/frm_print.h"
#include "ui/print_preview.h"

using timeline::gblnPrint;
using ui::PrintOutcome;
using ui::PrintPreview;
using ui_test::Music;
using ui_test::Studio;

namespace {

constexpr int kTimesOfTwoPages = 50;  // a command and an empty line each

document::Choreography ShowOf(int times)
{
    document::Choreography show;
    for (int k = 0; k < times; ++k)
        document::InsertSlot(show, k, k * 100, document::Commands("\x01\x12"));
    return show;
}

template <typename T>
T* Shown()
{
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (auto* wanted = qobject_cast<T*>(widget); wanted != nullptr && wanted->isVisible())
            return wanted;
    return nullptr;
}

/// Calls `act` once, as soon as a window of type T is on the screen.
template <typename T>
void When(std::function<void(T&)> act)
{
    auto* watch = new QTimer(qApp);
    QObject::connect(watch, &QTimer::timeout, watch, [watch, act = std::move(act)] {
        T* window = Shown<T>();
        if (window == nullptr)
            return;
        watch->stop();
        watch->deleteLater();
        act(*window);
    });
    watch->start(0);
}

void Click(QWidget& window, const char* name)
{
    auto* button = window.findChild<QPushButton*>(QString::fromLatin1(name));
    QVERIFY2(button != nullptr && button->isEnabled(), name);
    QTest::mouseClick(button, Qt::LeftButton);
}

/// Accepts the file dialog with the name it suggests, or with another one.
void SaveAs(const QString& name = {})
{
    When<QFileDialog>([name](QFileDialog& dialog) {
        if (!name.isEmpty())
            dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(name);
        QTimer::singleShot(0, &dialog, [&dialog] { QMetaObject::invokeMethod(&dialog, "accept"); });
    });
}

void CancelAtOnce()
{
    When<ui::frmPrint>([](ui::frmPrint& form) { Click(form, "cmdCancel"); });
}

QString Output(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        return {};
    return QString::fromUtf8(process.readAllStandardOutput());
}

/// The lines of a PDF file without their runs of blanks, but for the dates; a page a list.
QList<QStringList> PagesOf(const QString& file)
{
    QStringList pages =
        Output(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), file, QStringLiteral("-")})
            .split(QLatin1Char('\f'));
    pages.removeLast();
    QList<QStringList> lines;
    for (const QString& page : pages) {
        lines.emplace_back();
        for (const QString& line : page.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
            if (!line.contains(QLatin1String(" at ")))
                lines.back() << line.simplified();
    }
    return lines;
}

/// What stands in bold in a PDF file, but for the header.
QStringList BoldLines(const QString& file)
{
    QStringList lines;
    const QString text = Output(QStringLiteral("pdftohtml"),
                                {QStringLiteral("-xml"), QStringLiteral("-stdout"), file});
    static const QRegularExpression kBold(QStringLiteral("<b>(.*)</b>"));
    for (auto match = kBold.globalMatch(text); match.hasNext();)
        lines << match.next().captured(1).simplified();
    return lines.mid(3);
}

/// The lines of the script itself, which come in the order of the show whatever the page.
QStringList ScriptLines(const QString& script)
{
    QStringList lines;
    for (const QString& line : script.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        lines << line.simplified();
    return lines;
}

}  // namespace

class PrintTest : public QObject {
    Q_OBJECT

 private slots:
    void init();
    void cleanup();

    void menuOpensThePreview();
    void nothingIsPrintedOfNothing();
    void fileHoldsWhatWasSetLast();
    void twelfthCommandIsBold();
    void controlFileIsNotWrittenOver();
    void suggestsAFileBesideTheShow();
    void previewTurnsAndZooms();
    void previewOfALongShowIsCut();
    void cancelLeavesNoFile_data();
    void cancelLeavesNoFile();
    void cancelledPreviewComesBack();
    void failureIsTold();
    void closingTheWindowDoesNotStopIt();
    void onePrintAtATime();
    void printerGetsThePagesChosen_data();
    void printerGetsThePagesChosen();
    void printerGetsNothingOfACancelledScript();

 private:
    [[nodiscard]] QString File(const char* name) const
    {
        return folder_->filePath(QLatin1String(name));
    }
    [[nodiscard]] QStringList Files() const
    {
        return QDir(folder_->path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<QTemporaryDir> folder_;
};

void PrintTest::init()
{
    folder_ = std::make_unique<QTemporaryDir>();
}

void PrintTest::cleanup()
{
    QVERIFY(!gblnPrint);
    QTRY_VERIFY(Shown<ui::frmPrint>() == nullptr);
}

void PrintTest::menuOpensThePreview()
{
    Studio studio;
    studio.Open(ui_test::kShow, Music::None);
    studio.Show();
    studio.Choose("mnuFileAction_7");
    auto* preview = studio.window.findChild<PrintPreview*>();
    QVERIFY(preview != nullptr && preview->isVisible());
    QCOMPARE(preview->windowTitle(), QStringLiteral("Print Preview - Gala.ctl"));
    for (const QWidget* widget : preview->findChildren<QPushButton*>()) {
        QVERIFY2(!widget->accessibleName().isEmpty(), qPrintable(widget->objectName()));
        QVERIFY2(!widget->toolTip().isEmpty(), qPrintable(widget->objectName()));
    }
    QTest::keyClick(preview, Qt::Key_Escape);
    QTRY_VERIFY(studio.window.findChild<PrintPreview*>() == nullptr);
}

void PrintTest::nothingIsPrintedOfNothing()
{
    Studio studio;
    studio.Show();
    studio.Choose("mnuFileAction_7");
    QVERIFY(studio.window.findChild<PrintPreview*>() == nullptr);
}

void PrintTest::fileHoldsWhatWasSetLast()
{
    Studio studio;
    studio.Open(ui_test::kShow, Music::None);
    studio.Show();
    studio.editor.MoveTo(20'000);
    QVERIFY(studio.editor.SetSpinner("updnRings", 3, 4));
    QTest::keyClick(&studio.window, Qt::Key_P, Qt::ControlModifier);
    auto* preview = studio.window.findChild<PrintPreview*>();
    QVERIFY(preview != nullptr);
    const QString file = ui::SuggestedPdfName(studio.editor.Choreography());
    QVERIFY(file.endsWith("/Gala.pdf"));

    SaveAs();
    Click(*preview, "cmdSavePdf");
    QTRY_VERIFY(studio.window.findChild<PrintPreview*>() == nullptr);
    const QList<QStringList> pages = PagesOf(file);
    QCOMPARE(pages.size(), 1);
    QVERIFY(pages[0][0].endsWith("gala.ctl"));
    QCOMPARE(pages[0][1], QStringLiteral("Page 1"));
    const QString script =
        QString::fromStdString(timeline::ScriptText(studio.editor.Choreography()));
    QVERIFY(script.contains("00:20.0"));
    QCOMPARE(pages[0].mid(2), ScriptLines(script));
}

void PrintTest::twelfthCommandIsBold()
{
    document::Choreography show;
    document::Commands commands;
    for (char number = 1; number <= 13; ++number)
        commands += {'\0', number};  // numbers on the operator display
    document::InsertSlot(show, 0, 0, commands);
    const QStringList bold{"000-012 Display 0C on operator panel",
                           "000-013 Display 0D on operator panel"};

    QCOMPARE(ui::PrintToPdf(show, File("file.pdf"), nullptr), PrintOutcome::Printed);
    QCOMPARE(BoldLines(File("file.pdf")), bold);
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFileName(File("paper.pdf"));
    QCOMPARE(ui::PrintToPrinter(show, printer, nullptr), PrintOutcome::Printed);
    QCOMPARE(BoldLines(File("paper.pdf")), bold);
}

void PrintTest::controlFileIsNotWrittenOver()
{
    std::ofstream(File("Gala.ctl").toStdString()) << "the show";
    document::Choreography show = ShowOf(1);
    show.fileName = File("Gala.ctl").toStdString();
    PrintPreview preview(show, nullptr);
    preview.setAttribute(Qt::WA_DeleteOnClose, false);
    preview.show();
    SaveAs(File("Gala.ctl"));
    When<QMessageBox>([](QMessageBox& box) { box.button(QMessageBox::Yes)->click(); });
    Click(preview, "cmdSavePdf");
    QCOMPARE(Files(), (QStringList{"Gala.ctl", "Gala.ctl.pdf"}));
    QCOMPARE(QFileInfo(File("Gala.ctl")).size(), 8);
}

void PrintTest::suggestsAFileBesideTheShow()
{
    const QString documents =
        QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) + "/Script.pdf";
    const struct {
        const char* control;
        QString suggested;
    } cases[] = {
        {"/shows/Gala.ctl", "/shows/Gala.pdf"},
        {"/shows/Gala.Night.ctl", "/shows/Gala.Night.pdf"},
        {"Gala.ctl", QDir::current().filePath("Gala.pdf")},
        {"/shows/.ctl", documents},
        {"", documents},
    };
    for (const auto& c : cases) {
        document::Choreography show;
        show.fileName = c.control;
        QCOMPARE(ui::SuggestedPdfName(show), c.suggested);
    }
}

void PrintTest::previewTurnsAndZooms()
{
    PrintPreview preview(ShowOf(kTimesOfTwoPages), nullptr);
    preview.setAttribute(Qt::WA_DeleteOnClose, false);
    preview.show();
    preview.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&preview));
    auto* pages = preview.findChild<QPrintPreviewWidget*>();
    auto* page = preview.findChild<QSpinBox*>("updnPage");
    QTRY_COMPARE(pages->pageCount(), 2);
    QCOMPARE(page->text(), QStringLiteral("1 of 2"));
    QVERIFY(!preview.findChild<QPushButton*>("cmdPageUp")->isEnabled());

    QTest::keyClick(&preview, Qt::Key_PageDown);
    QTRY_COMPARE(pages->currentPage(), 2);
    QCOMPARE(page->text(), QStringLiteral("2 of 2"));
    QVERIFY(!preview.findChild<QPushButton*>("cmdPageDown")->isEnabled());
    QTest::keyClick(&preview, Qt::Key_PageUp);
    QTRY_COMPARE(pages->currentPage(), 1);
    page->setValue(2);
    QTRY_COMPARE(pages->currentPage(), 2);

    const double wide = pages->zoomFactor();
    Click(preview, "cmdFitPage");
    const double whole = pages->zoomFactor();
    QVERIFY(whole < wide);
    Click(preview, "cmdZoomIn");
    QVERIFY(pages->zoomFactor() > whole);
    Click(preview, "cmdZoomOut");
    QCOMPARE(pages->zoomFactor(), whole);
}

void PrintTest::previewOfALongShowIsCut()
{
    const struct {
        int pages;
        int shown;
        bool noted;
    } cases[] = {
        {ui::kPreviewPages, ui::kPreviewPages, false},
        {ui::kPreviewPages + 1, ui::kPreviewPages, true},
    };
    for (const auto& c : cases) {
        const document::Choreography show = ShowOf((c.pages * 61 - 1) / 2);
        QCOMPARE(ui::ScriptPageCount(show), c.pages);
        PrintPreview preview(show, nullptr);
        preview.setAttribute(Qt::WA_DeleteOnClose, false);
        preview.show();
        QTRY_COMPARE(preview.findChild<QPrintPreviewWidget*>()->pageCount(), c.shown);
        QCOMPARE(preview.findChild<QLabel*>("lblNote")->text().contains("1,001 pages"), c.noted);
    }
}

void PrintTest::cancelLeavesNoFile_data()
{
    using Way = std::function<void(ui::frmPrint&)>;
    QTest::addColumn<Way>("cancel");
    QTest::newRow("button") << Way([](ui::frmPrint& form) { Click(form, "cmdCancel"); });
    QTest::newRow("Escape") << Way(
        [](ui::frmPrint& form) { QTest::keyClick(&form, Qt::Key_Escape); });
    QTest::newRow("closed") << Way([](ui::frmPrint& form) { form.close(); });
    QTest::newRow("the flag alone") << Way([](ui::frmPrint&) { gblnPrint = false; });
}

void PrintTest::cancelLeavesNoFile()
{
    QFETCH(std::function<void(ui::frmPrint&)>, cancel);
    int done = -1;
    When<ui::frmPrint>([&](ui::frmPrint& form) {
        done = form.findChild<QProgressBar*>()->value();
        cancel(form);
    });
    QCOMPARE(ui::PrintToPdf(ShowOf(document::kMostSlots), File("Gala.pdf"), nullptr),
             PrintOutcome::Cancelled);
    QVERIFY2(done >= 0 && done < 30, qPrintable(QString::number(done)));  // on the first page
    QCOMPARE(Files(), QStringList());

    std::ofstream(File("Gala.pdf").toStdString()) << "before";
    When<ui::frmPrint>(cancel);
    QCOMPARE(ui::PrintToPdf(ShowOf(document::kMostSlots), File("Gala.pdf"), nullptr),
             PrintOutcome::Cancelled);
    QCOMPARE(Files(), QStringList{"Gala.pdf"});
    QCOMPARE(QFileInfo(File("Gala.pdf")).size(), 6);
}

void PrintTest::cancelledPreviewComesBack()
{
    QWidget window;
    window.show();
    auto* preview = new PrintPreview(ShowOf(document::kMostSlots), &window);
    preview->open();
    SaveAs(File("Gala.pdf"));
    bool away = false;
    When<ui::frmPrint>([&](ui::frmPrint& form) {
        away = !preview->isVisible();
        Click(form, "cmdCancel");
    });
    Click(*preview, "cmdSavePdf");
    QVERIFY(away);
    QVERIFY(preview->isVisible());
    QCOMPARE(Files(), QStringList());
}

void PrintTest::failureIsTold()
{
    QDir(folder_->path()).mkdir("Folder.pdf");
    const QStringList before = Files();
    for (const char* name : {"nowhere/Gala.pdf", "Folder.pdf"}) {
        QString told;
        When<QMessageBox>([&](QMessageBox& box) {
            told = box.text();
            box.accept();
        });
        QCOMPARE(ui::PrintToPdf(ShowOf(3), File(name), nullptr), PrintOutcome::Failed);
        QVERIFY2(told.contains(File(name)), qPrintable(told));
        QCOMPARE(Files(), before);
    }
}

void PrintTest::closingTheWindowDoesNotStopIt()
{
    Studio studio;
    studio.Open(ui_test::kShow, Music::None);
    studio.Show();
    bool stayed = false;
    When<ui::frmPrint>([&](ui::frmPrint& form) {
        studio.window.close();
        stayed = form.isVisible() && !studio.window.isVisible();
    });
    QCOMPARE(ui::PrintToPdf(ShowOf(kTimesOfTwoPages), File("Gala.pdf"), &studio.window),
             PrintOutcome::Printed);
    QVERIFY(stayed);
    QCOMPARE(PagesOf(File("Gala.pdf")).size(), 2);
}

void PrintTest::onePrintAtATime()
{
    Studio studio;
    studio.Open(ui_test::kShow, Music::None);
    studio.Show();
    bool asked = false;
    When<ui::frmPrint>([&](ui::frmPrint&) {
        asked = true;
        studio.Choose("mnuFileAction_7");
        QCOMPARE(ui::PrintToPdf(ShowOf(1), File("second.pdf"), nullptr), PrintOutcome::Cancelled);
    });
    QCOMPARE(ui::PrintToPdf(ShowOf(kTimesOfTwoPages), File("first.pdf"), &studio.window),
             PrintOutcome::Printed);
    QVERIFY(asked);
    QVERIFY(studio.window.findChild<PrintPreview*>() == nullptr);
    QCOMPARE(Files(), QStringList{"first.pdf"});
}

void PrintTest::printerGetsThePagesChosen_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QStringList>("pages");
    QTest::newRow("all") << 0 << 0 << QStringList{"Page 1", "Page 2", "Page 3"};
    QTest::newRow("the second") << 2 << 2 << QStringList{"Page 2"};
    QTest::newRow("more than there are") << 2 << 9 << QStringList{"Page 2", "Page 3"};
    QTest::newRow("behind the last") << 7 << 9 << QStringList{"Page 3"};
}

void PrintTest::printerGetsThePagesChosen()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFileName(File("paper.pdf"));
    if (from > 0) {
        printer.setPrintRange(QPrinter::PageRange);
        printer.setFromTo(from, to);
    }
    QCOMPARE(ui::PrintToPrinter(ShowOf(80), printer, nullptr), PrintOutcome::Printed);
    QStringList pages;
    for (const QStringList& page : PagesOf(File("paper.pdf")))
        pages << page.value(1);
    QTEST(pages, "pages");
}

void PrintTest::printerGetsNothingOfACancelledScript()
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFileName(File("paper.pdf"));
    CancelAtOnce();
    QCOMPARE(ui::PrintToPrinter(ShowOf(document::kMostSlots), printer, nullptr),
             PrintOutcome::Cancelled);
    QCOMPARE(Files(), QStringList());
}

QTEST_MAIN(PrintTest)
#include "print_test.moc"
