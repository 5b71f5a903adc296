#pragma once
// A design built on the form exactly as quellmark-cli builds it from its
// options, for tests that need real designs rather than hand-set fields.
#include "circuit/circuit_exports.h"
#include "cli/command_line.h"
#include "cli/file_options.h"
#include "design/cycle.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "screen/user_actions.h"

#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace qm::test {

/// The form and the scripted platform it answers through.
struct BuiltDesign
{
    RecordingPlatform platform;
    std::unique_ptr<QuellmarkForm> form;
};

/// Words split at blanks: "--poles 5 --circuit sallen-key".
inline std::vector<std::string> words(const std::string& line)
{
    std::istringstream in(line);
    std::vector<std::string> out;
    for (std::string w; in >> w;)
        out.push_back(w);
    return out;
}

inline std::unique_ptr<BuiltDesign> buildDesign(const std::string& options)
{
    auto d = std::make_unique<BuiltDesign>();
    const CommandLine cl = parseCommandLine(words(options));
    d->platform.fileAnswers.assign(cl.fileAnswers.begin(), cl.fileAnswers.end());
    d->platform.answers.assign(cl.answers.begin(), cl.answers.end());
    PlatformServices services = d->platform.services();
    services.decimalSeparator = '.';
    d->form = std::make_unique<QuellmarkForm>(services);
    addCircuitHandlers(*d->form);
    d->form->runGuarded([&] { Form_Initialize(*d->form); });
    runActions(*d->form, d->platform, cl);
    return d;
}

} // namespace qm::test
