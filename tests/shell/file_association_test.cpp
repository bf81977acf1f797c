// What the system's table of file classes is told at each start.

#include "shell/shell_harness.h"

namespace logic_test {
namespace {

TEST_F(ShellTest, ProjectFilesOpenInTheProgram)
{
    const std::string program = platform.folder + "\\quillmont.exe";
    EXPECT_EQ(platform.classRows, ".qpj: QMT_Project\n"
                                  ".qpj Content Type: text/plain\n"
                                  "QMT_Project: Quillmont Project File\n"
                                  "QMT_Project EditFlags: (0)\n"
                                  "QMT_Project\\DefaultIcon: "
                                      + program
                                      + ",0\n"
                                        "QMT_Project\\Shell: \n"
                                        "QMT_Project\\Shell\\Open: \n"
                                        "QMT_Project\\Shell\\Open\\Command: "
                                      + program
                                      + " %1\n"
                                        "changed\n");
}

} // namespace
} // namespace logic_test
