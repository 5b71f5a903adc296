// The design file reader against any bytes at all: opened from the File
// menu over the built-in design, and read as the default design at start-up.
// Either the design loads or the one message shows (nothing at start-up);
// no number on the screen is NaN or infinite, and a design that loaded is
// saved as a file that loads again.
#include "design/cycle.h"
#include "files/design_extras.h"
#include "files/design_file.h"
#include "files/file_menu.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>

namespace {

std::string lower(std::string_view s)
{
    std::string out(s);
    std::transform(out.begin(), out.end(), out.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return out;
}

[[noreturn]] void fault(const std::string& what)
{
    std::fprintf(stderr, "%s\n", what.c_str());
    std::abort();
}

void writeFile(const std::string& path, std::string_view bytes)
{
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

/// "nan" or "inf" on the screen that the file didn't bring with it.
void checkScreen(const qm::QuellmarkForm& f, const std::string& input)
{
    for (const char* bad : {"nan", "inf"}) {
        if (input.find(bad) != std::string::npos) continue;
        for (const qm::Control* c : f.all())
            if (lower(c->text).find(bad) != std::string::npos && c != &f.Prompt)
                fault(c->name + " shows " + c->text);
    }
}

/// What may be said of a file: nothing; the damaged mask of a default
/// design, which opens without it; or also that a file is no design.
enum class Said { Nothing, MaskDamaged, NotADesign };

void checkMessages(const qm::RecordingPlatform& p, Said allowed)
{
    for (const qm::RecordedMessage& m : p.messages) {
        const bool mask = m.text == qm::kMaskDamaged && allowed != Said::Nothing;
        const bool notADesign = m.text == qm::kNotADesignFile && allowed == Said::NotADesign;
        if (!mask && !notADesign) fault("message: " + m.text);
    }
}

struct Screen
{
    explicit Screen(const std::string& defaultPath = "")
    {
        qm::PlatformServices s = p.services();
        s.defaultDesignPath = defaultPath;
        f = std::make_unique<qm::QuellmarkForm>(s);
        f->runGuarded([&] { qm::Form_Initialize(*f); });
    }
    qm::RecordingPlatform p;
    std::unique_ptr<qm::QuellmarkForm> f;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // One file per fuzzing process, removed as the process ends.
    static const struct ScratchFile
    {
        std::string path = "/tmp/quellmark-fuzz-" + std::to_string(getpid()) + ".qmf";
        ~ScratchFile() { std::remove(path.c_str()); }
    } scratch;
    const std::string& path = scratch.path;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::string input = lower(bytes);
    writeFile(path, bytes);

    Screen menu;
    menu.f->runGuarded([&] { qm::openDesignFile(*menu.f, path); });
    checkMessages(menu.p, Said::NotADesign);
    checkScreen(*menu.f, input);
    if (menu.f->designLoaded == -1) {
        writeFile(path, qm::designFileText(*menu.f));
        Screen again;
        again.f->runGuarded([&] { qm::openDesignFile(*again.f, path); });
        if (again.f->designLoaded != -1) fault("a saved design does not load again");
        checkMessages(again.p, Said::Nothing);
        writeFile(path, bytes);
    }

    Screen start(path);
    checkMessages(start.p, Said::MaskDamaged);
    checkScreen(*start.f, input);
    return 0;
}
