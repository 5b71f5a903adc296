#include "files/whole_file.h"

#include <atomic>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace qm {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void fail(const std::string& path, const std::string& reason)
{
    throw FileWriteError("Could not write " + path + ": " + reason + ".");
}

/// A name beside the target that no other write of this process uses.
fs::path temporaryBeside(const fs::path& target)
{
    static std::atomic<unsigned> counter{0};
    fs::path tmp = target;
    tmp += ".part" + std::to_string(counter++);
    return tmp;
}

std::string lastSystemReason()
{
    const int err = errno;
    return err != 0 ? std::strerror(err) : "the system refused it";
}

} // namespace

void writeWholeFile(const std::string& path, std::string_view bytes)
{
    const fs::path target(path);
    std::error_code ec;
    if (fs::is_directory(target, ec)) fail(path, "it is a folder");
    const fs::path tmp = temporaryBeside(target);
    {
        errno = 0;
        std::ofstream out(tmp, std::ios::binary | std::ios::trunc);
        if (!out) fail(path, lastSystemReason());
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        out.flush();
        if (!out) {
            const std::string reason = lastSystemReason();
            out.close();
            fs::remove(tmp, ec);
            fail(path, reason);
        }
    }
    fs::rename(tmp, target, ec);
    if (ec) {
        std::error_code ignored;
        fs::remove(tmp, ignored);
        fail(path, ec.message());
    }
}

} // namespace qm
