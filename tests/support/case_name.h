#pragma once
// Readable names for the cases of parameterised suites: gtest takes a case's
// name from its `name` member instead of numbering it, and prints the case by
// that name instead of dumping its bytes.
#include <cctype>
#include <gtest/gtest.h>
#include <string>

namespace qm::test {

/// A gtest name from free text: letters and digits kept, every other run of
/// characters turned into one '_'.
inline std::string testName(const std::string& text)
{
    std::string out;
    for (char ch : text) {
        if (std::isalnum(static_cast<unsigned char>(ch)))
            out += ch;
        else if (!out.empty() && out.back() != '_')
            out += '_';
    }
    while (!out.empty() && out.back() == '_')
        out.pop_back();
    return out.empty() ? std::string("case") : out;
}

/// Name generator for INSTANTIATE_TEST_SUITE_P over cases with a `name`.
struct CaseName
{
    template <class Case> std::string operator()(const ::testing::TestParamInfo<Case>& info) const
    {
        return testName(info.param.name) + "_" + std::to_string(info.index);
    }
};

} // namespace qm::test
