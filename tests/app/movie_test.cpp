// The same project saved through the dialogues and by quillmont-render: the same bytes.

#include "app/child_process.h"
#include "support/files.h"
#include "support/manifest.h"

#include <gtest/gtest.h>

namespace app_test {
namespace {

using testmedia::bytesOf;
using testmedia::writeBytes;

TEST(MovieTest, TheDialoguesAndTheRendererWriteTheSame)
{
    const testmedia::TempFolder folder;
    const std::string clip = (testmedia::mediaFolder() / "h264.mp4").string();
    writeBytes(folder / "film.qpj",
               "<QuillmontProject><Timeline><Track Kind=\"Video\"><Source File=\"0\" Stream=\"Video\" Start=\"0\" "
               "Stop=\"1500\"/><Effect Name=\"Wave\" Start=\"300\" Stop=\"700\"/></Track><Track Kind=\"Video\"/>"
               "<Track Kind=\"Audio\"><Source File=\"0\" Stream=\"Audio\" Start=\"0\" Stop=\"1500\"/></Track>"
               "</Timeline><MediaList><File Src=\""
                   + clip + "\"/></MediaList><PreviewDimension Width=\"320\" Height=\"240\"/></QuillmontProject>");
    const struct {
        const char* ending;
        std::vector<std::string> words; // that say what the dialogues begin with
    } cases[] = {{".avi", {"--fps", "15", "--size", "320x240", "--video-compressor", "Uncompressed"}},
                 {".wmv", {"--profile", "Video for dial-up modems or LAN (28.8 to 100 Kbps)", "--size", "320x240"}}};
    for (const auto& [ending, words] : cases) {
        SCOPED_TRACE(ending);
        const std::string edited = std::string("edited") + ending;
        writeBytes(folder / "script", "open " + (folder / "film.qpj").string() + "\nmovie " + edited + "\n");
        const auto edit = Child({"/bin/sh", "-c", "exec \"$0\" < script", QUILLMONT_EDIT}, folder.path()).end();
        EXPECT_EQ(edit.status, 0) << edit.err;
        std::vector<std::string> command{QUILLMONT_RENDER, "film.qpj", "-o", std::string("rendered") + ending};
        command.insert(command.end(), words.begin(), words.end());
        const auto render = Child(command, folder.path()).end();
        EXPECT_EQ(render.status, 0) << render.err;
        EXPECT_TRUE(bytesOf(folder / edited) == bytesOf(folder / (std::string("rendered") + ending)));
    }
}

} // namespace
} // namespace app_test
