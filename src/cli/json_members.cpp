#include "cli/json_members.h"

#include "cli/design_json.h"
#include "cli/json_writer.h"

namespace qm {

void JsonMembers::key(const std::string& k)
{
    if (!out_.empty()) out_ += lineBreak_.empty() ? ", " : ",";
    out_ += lineBreak_ + "\"" + jsonEscape(k) + "\": ";
    lineBreak_.clear();
}

JsonMembers& JsonMembers::newLine(const std::string& indent)
{
    lineBreak_ = "\n" + indent;
    return *this;
}

JsonMembers& JsonMembers::number(const std::string& k, double x)
{
    key(k);
    out_ += jsonNumber(x);
    return *this;
}

JsonMembers& JsonMembers::number(const std::string& k, const std::optional<double>& x)
{
    key(k);
    out_ += x ? jsonNumber(*x) : "null";
    return *this;
}

JsonMembers& JsonMembers::text(const std::string& k, const std::string& value)
{
    key(k);
    out_ += "\"" + jsonEscape(value) + "\"";
    return *this;
}

JsonMembers& JsonMembers::raw(const std::string& k, const std::string& json)
{
    key(k);
    out_ += json;
    return *this;
}

std::string jsonNumbers(const std::vector<double>& xs)
{
    std::string out = "[";
    constexpr std::size_t kNumberWidth = 14;
    out.reserve(xs.size() * kNumberWidth);
    for (std::size_t i = 0; i < xs.size(); ++i) {
        if (i) out += ", ";
        out += jsonNumber(xs[i]);
    }
    return out + "]";
}

std::string jsonArray(const std::vector<std::string>& items, const std::string& indent)
{
    std::string out = "[";
    for (std::size_t i = 0; i < items.size(); ++i)
        out += (i ? ",\n" : "\n") + indent + items[i];
    return out + (items.empty() ? "]" : "\n" + indent + "]");
}

} // namespace qm
