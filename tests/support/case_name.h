#pragma once
// Readable names for the cases of parameterised suites: gtest takes a case's
// name from its `name` member instead of numbering it, and prints the case by
// that name instead of dumping its bytes.
#include <cctype>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <vector>

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

namespace detail {

template <class T> void printValue(std::ostream& os, const T& v)
{
    if constexpr (requires { os << v; })
        os << v;
    else
        os << "{...}";
}

/// A text as it opens: a case's name shouldn't carry a whole prompt.
inline void printValue(std::ostream& os, const std::string& v)
{
    constexpr std::size_t kShown = 24;
    std::string shown = v.substr(0, v.find_first_of("\r\n"));
    if (shown.size() > kShown) shown = shown.substr(0, kShown);
    os << '"' << shown << (shown.size() < v.size() ? "...\"" : "\"");
}

inline void printValue(std::ostream& os, const char* v)
{
    if (v)
        printValue(os, std::string(v));
    else
        os << "none";
}

inline void printValue(std::ostream& os, bool v)
{
    os << (v ? "yes" : "no");
}

template <class A, class B> void printValue(std::ostream& os, const std::pair<A, B>& v)
{
    os << '(';
    printValue(os, v.first);
    os << ", ";
    printValue(os, v.second);
    os << ')';
}

template <class T> void printValue(std::ostream& os, const std::vector<T>& v)
{
    os << '[';
    for (std::size_t i = 0; i < v.size(); ++i) {
        if (i) os << ", ";
        printValue(os, v[i]);
    }
    os << ']';
}

inline void printPairs(std::ostream&, bool) {}

template <class T, class... Rest>
void printPairs(std::ostream& os, bool first, const char* name, const T& value, const Rest&... rest)
{
    os << (first ? "" : ", ") << name << '=';
    printValue(os, value);
    printPairs(os, false, rest...);
}

} // namespace detail

/// "name=value, ..." of a case's fields, for a PrintTo of the case.
template <class... NamesAndValues> void printFields(std::ostream& os, const NamesAndValues&... nv)
{
    os << '{';
    detail::printPairs(os, true, nv...);
    os << '}';
}

} // namespace qm::test
