#pragma once
// A JSON object built member by member, numbers through jsonNumber.
#include <optional>
#include <string>
#include <vector>

namespace qm {

class JsonMembers
{
  public:
    JsonMembers& number(const std::string& key, double x);
    JsonMembers& number(const std::string& key, const std::optional<double>& x);
    JsonMembers& text(const std::string& key, const std::string& value);
    /// A member whose value is JSON already.
    JsonMembers& raw(const std::string& key, const std::string& json);
    /// The next member starts a new line at `indent`.
    JsonMembers& newLine(const std::string& indent);
    std::string object() const { return "{" + out_ + "}"; }

  private:
    void key(const std::string& k);
    std::string out_, lineBreak_;
};

/// A JSON array of numbers.
std::string jsonNumbers(const std::vector<double>& xs);

/// A JSON array of JSON values, one a line at `indent`.
std::string jsonArray(const std::vector<std::string>& items, const std::string& indent);

} // namespace qm
