// Sizes, names, dates and copies: their exact forms, and that what is wrong is reported.

#include "core/file_text.h"

#include "support/scripted_platform.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace file_text_test {
namespace {

using namespace file_text;

std::string contents(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class FileTextTest : public testing::Test {
protected:
    /// Error number and routine of each record in the log.
    std::string reported() const
    {
        std::string found;
        std::ifstream log(platform.folder + "/ErrLog.asr");
        for (std::string line; std::getline(log, line);) {
            if (line.starts_with("Number") || line.starts_with("Function")) {
                found += line.substr(15, line.size() - 16) + " ";
            }
        }
        return found;
    }

    testsupport::ScriptedPlatform platform;
};

TEST_F(FileTextTest, Sizes)
{
    constexpr std::int64_t kGiga = 1073741824;
    const std::pair<std::int64_t, std::string> cases[] = {{0, ".00 Bytes"},
                                                          {500, "500.00 Bytes"},
                                                          {-5, "-5.00 Bytes"},
                                                          {1023, "1023.00 Bytes"},
                                                          {1024, "1.00 KB"},
                                                          {1536, "1.50 KB"},
                                                          {1152, "1.13 KB"},
                                                          {1048575, "1024.00 KB"},
                                                          {1048576, "1.00 MB"},
                                                          {kGiga - 1, "1024.00 MB"},
                                                          {kGiga, ""},
                                                          {5 * kGiga, ""},
                                                          {-5 * kGiga, "-5368709120.00 Bytes"}};
    for (const auto& [bytes, text] : cases) {
        EXPECT_EQ(FileSizeUnitConversion(bytes), text) << bytes;
    }
}

TEST_F(FileTextTest, Names)
{
    const std::string filled("/films/b.avi\0\0\0", 15);
    const std::pair<std::string, std::string> names[] = {{"", ""},
                                                         {"/films/b.avi", "b.avi"},
                                                         {"C:\\films\\b.avi", "b.avi"},
                                                         {filled, "b.avi"},
                                                         {"/films/", ""},
                                                         {"/b & \"ü\".avi", "b & \"ü\".avi"},
                                                         {"/" + std::string(5000, 'x'), std::string(5000, 'x')}};
    for (const auto& [path, name] : names) {
        EXPECT_EQ(ExtractFileName(path), name) << path;
    }
    EXPECT_EQ(reported(), "");
    EXPECT_EQ(ExtractFileName("b.avi"), "b.avi");
    EXPECT_EQ(reported(), "5 ExtractFileName ");

    EXPECT_EQ(ChangeExtension("a.b.avi", "wmv"), "a.b.wmv");
    EXPECT_EQ(ChangeExtension("movie", "wmv"), "movie");
    EXPECT_EQ(ChangeExtension("movie.", "wmv"), "movie.wmv");
}

TEST_F(FileTextTest, Dates)
{
    const std::pair<std::string, std::string> cases[] = {{"12/31/2003", "12/31/2003 00:00:00"},
                                                         {"2/29/2004", "2/29/2004 00:00:00"},
                                                         {" 1 / 2 / 29 ", "1/2/2029 00:00:00"},
                                                         {"1/2/30", "1/2/1930 00:00:00"}};
    for (const auto& [text, day] : cases) {
        EXPECT_EQ(platform.asText(GetDateLocalFormat(text)), day) << text;
    }
    EXPECT_EQ(reported(), "");
    std::string expected;
    for (const char* const wrong : {"", "12", "1/2", "1/2/3/4", "2/29/2003", "13/1/2003", "0/1/2003", "1/0/2003",
                                    "1/2/x", "1.5/2/2003", "1/2/99999", "-1/2/2003", "99999999999/1/1"}) {
        EXPECT_EQ(platform.asText(GetDateLocalFormat(wrong)), "0/0/0 00:00:00") << wrong;
        expected += "13 GetDateLocalFormat ";
    }
    EXPECT_EQ(reported(), expected);
}

TEST_F(FileTextTest, CombosFoldersAndCopies)
{
    ComboBox box;
    box.List = std::vector<std::string>{"Uncompressed", "Other"};
    EXPECT_TRUE(IsInCombo(box, "Other"));
    EXPECT_FALSE(IsInCombo(box, "other"));
    EXPECT_FALSE(IsInCombo({}, ""));

    EXPECT_EQ(GetTempFolder(), platform.folder);

    const std::string from = platform.folder + "/from";
    std::ofstream(from) << "film";
    FileOpSilent = true;
    FileOpRenameOnCollision = false;
    CopyFileWithShell(from, platform.folder + "/to");
    EXPECT_EQ(contents(platform.folder + "/to"), "film");
    EXPECT_TRUE(FileOpRenameOnCollision);
    EXPECT_FALSE(FileOpNoConfirmation || FileOpNoConfirmMkDir || FileOpSilent || FileOpSimpleProgress);
    CopyFileWithShell(platform.folder + "/missing", platform.folder + "/to2");
    ASSERT_EQ(platform.messages.size(), 1u) << "what the disk refuses is told, and no fault to report";
    EXPECT_TRUE(platform.messages[0].text.ends_with("/to2\": the file is not there any more."));
}

} // namespace
} // namespace file_text_test
