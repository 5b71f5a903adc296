#pragma once
// Reference files in tests/data, compared line by line. Writing
// QUELLMARK_WRITE_DATA=1 into the environment makes the tests write those
// files instead of reading them.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

namespace qm::test {

inline std::string dataPath(const std::string& relative)
{
    const char* dir = std::getenv("QUELLMARK_TEST_DATA");
    return std::string(dir ? dir : "tests/data") + "/" + relative;
}

inline bool writingData()
{
    const char* w = std::getenv("QUELLMARK_WRITE_DATA");
    return w && std::string(w) == "1";
}

inline std::vector<std::string> readLines(const std::string& path)
{
    std::vector<std::string> lines;
    std::ifstream in(path);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

/// Compares `actual` with the reference file, naming the first line that
/// differs; with QUELLMARK_WRITE_DATA=1 writes the file instead.
inline ::testing::AssertionResult matchesReference(const std::vector<std::string>& actual,
                                                   const std::string& relative)
{
    const std::string path = dataPath(relative);
    if (writingData()) {
        std::ofstream out(path, std::ios::binary);
        for (const std::string& line : actual)
            out << line << "\n";
        return out ? ::testing::AssertionSuccess()
                   : ::testing::AssertionFailure() << "cannot write " << path;
    }
    const std::vector<std::string> expected = readLines(path);
    if (expected.empty()) return ::testing::AssertionFailure() << "no reference file " << path;
    for (std::size_t i = 0; i < actual.size() || i < expected.size(); ++i) {
        const std::string a = i < actual.size() ? actual[i] : "(nothing)";
        const std::string e = i < expected.size() ? expected[i] : "(nothing)";
        if (a != e)
            return ::testing::AssertionFailure() << relative << " line " << i + 1
                                                 << "\n  expected: " << e << "\n  actual:   " << a;
    }
    return ::testing::AssertionSuccess();
}

} // namespace qm::test
