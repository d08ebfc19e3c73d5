#include "platform/rdl/engine/file_output.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/rdl/engine/report_folder.h"

namespace rdl::engine {
namespace {

class OutputFile : public test::ReportFolder {
 protected:
    static unsigned ModeOf(const std::string& path) {
        struct stat found {};
        EXPECT_EQ(stat(path.c_str(), &found), 0);
        return found.st_mode & 0777;
    }
};

TEST_F(OutputFile, HasTheModeOfTheUsersMask) {
    const mode_t before = umask(027);
    FileOutput output(Path("out.pdf"));
    output.Write("x");
    output.Commit();
    umask(before);
    EXPECT_EQ(ModeOf(Path("out.pdf")), 0640u);
    EXPECT_EQ(Read("out.pdf"), "x");
}

TEST_F(OutputFile, PipeThatAnExportGoesToKeepsItsMode) {
    const std::string path = Path("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const int reader = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    FileOutput output(path);
    output.Write("x");
    output.Commit();
    close(reader);
    EXPECT_EQ(ModeOf(path), 0600u);
}

}  // namespace
}  // namespace rdl::engine
