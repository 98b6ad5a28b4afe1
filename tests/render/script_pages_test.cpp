#include "render/script_pages.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPdfWriter>
#include <QTemporaryDir>
#include <fstream>
#include <iterator>
#include <string>

#include "document/control_text.h"
#include "document/time_text.h"

namespace {

namespace fs = std::filesystem;
using render::PdfOutcome;
using render::WriteScriptPdf;

document::Choreography Show(int times)
{
    std::string text = "ct0-381\n";
    for (int k = 0; k < times; ++k)
        text += document::TimeText(k * 1000) + "051-00" + std::to_string(1 + k % 7) + "\n";
    document::Choreography choreography;
    document::ReadControlText(choreography, text);
    return choreography;
}

std::string Content(const fs::path& file)
{
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

class ScriptPdf : public testing::Test {
 protected:
    [[nodiscard]] fs::path File() const { return folder_.path().toStdString() + "/script.pdf"; }
    /// Nothing lies about but what the test put there.
    [[nodiscard]] std::ptrdiff_t FileCount() const
    {
        return std::distance(fs::directory_iterator(folder_.path().toStdString()), {});
    }

    QTemporaryDir folder_;
};

TEST_F(ScriptPdf, AppearsWhole)
{
    ASSERT_EQ(WriteScriptPdf(Show(40), File(), "DATE", [] {}), PdfOutcome::Written);
    const std::string pdf = Content(File());
    EXPECT_TRUE(pdf.starts_with("%PDF-"));
    EXPECT_NE(pdf.rfind("%%EOF"), std::string::npos);
    EXPECT_EQ(FileCount(), 1);
}

TEST_F(ScriptPdf, LeavesNothingWhenCancelled)
{
    const auto cancel = [] { timeline::gblnPrint = false; };
    EXPECT_EQ(WriteScriptPdf(Show(40), File(), "DATE", cancel), PdfOutcome::Cancelled);
    EXPECT_EQ(FileCount(), 0);

    std::ofstream(File()) << "the script before";
    EXPECT_EQ(WriteScriptPdf(Show(40), File(), "DATE", cancel), PdfOutcome::Cancelled);
    EXPECT_EQ(Content(File()), "the script before");
    EXPECT_EQ(FileCount(), 1);
}

TEST_F(ScriptPdf, SaysThatItCannotBeWritten)
{
    EXPECT_EQ(WriteScriptPdf(Show(1), File() / "below_no_folder.pdf", "DATE", [] {}),
              PdfOutcome::Failed);
    EXPECT_EQ(WriteScriptPdf(Show(1), folder_.path().toStdString(), "DATE", [] {}),
              PdfOutcome::Failed);
    EXPECT_EQ(FileCount(), 0);
}

// The same pages on any device: 36 times are 72 lines, of which 61 fit the first page, so the
// second page is the last.
TEST_F(ScriptPdf, PagesGoToTheDeviceOfTheCaller)
{
    for (const QPageSize::PageSizeId size : {QPageSize::A4, QPageSize::Letter, QPageSize::A6}) {
        QPdfWriter writer(QString::fromStdString(File().string()));
        writer.setPageSize(QPageSize(size));
        render::ScriptPages pages(writer);
        EXPECT_TRUE(timeline::ScriptPrint(Show(36), "DATE", pages, [] {}).PrintScript());
        EXPECT_FALSE(pages.Failed());
        const std::string pdf = Content(File());
        EXPECT_NE(pdf.find("/Count 2"), std::string::npos);
    }
}

}  // namespace
