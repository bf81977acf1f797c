#include "twcore/media/file_stamp.h"

#include <sys/stat.h>

namespace twcore {

FileStamp FileStamp::of(const std::string& path)
{
    struct stat facts {};
    if (::stat(path.c_str(), &facts) != 0) {
        return {};
    }
    constexpr std::int64_t kSecond = 1'000'000'000;
    return {true, std::int64_t{facts.st_mtim.tv_sec} * kSecond + facts.st_mtim.tv_nsec, facts.st_size};
}

} // namespace twcore
