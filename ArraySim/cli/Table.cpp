#include "Table.h"

#include <algorithm>
#include <cctype>
#include <cstdio>

namespace zarcli {

std::string jsonString(const std::string& s)
{
    std::string out = "\"";
    for (unsigned char c : s) {
        switch (c) {
            case '"':
                out += "\\\"";
                break;
            case '\\':
                out += "\\\\";
                break;
            case '\n':
                out += "\\n";
                break;
            case '\t':
                out += "\\t";
                break;
            default:
                if (c < 0x20) {
                    char buf[8];
                    snprintf(buf, sizeof buf, "\\u%04x", c);
                    out += buf;
                } else {
                    out += (char)c;
                }
        }
    }
    return out + "\"";
}

void Table::printText(std::ostream& out) const
{
    std::vector<size_t> width(columns_.size());
    for (size_t i = 0; i < columns_.size(); ++i)
        width[i] = columns_[i].size();
    for (const auto& r : rows_)
        for (size_t i = 0; i < r.size() && i < width.size(); ++i)
            width[i] = std::max(width[i], r[i].size());
    auto line = [&](const std::vector<std::string>& cells, bool upper) {
        std::string s;
        for (size_t i = 0; i < columns_.size(); ++i) {
            std::string c = i < cells.size() ? cells[i] : "";
            if (upper)
                std::transform(c.begin(), c.end(), c.begin(),
                               [](unsigned char x) { return (char)toupper(x); });
            s += c;
            if (i + 1 < columns_.size())
                s += std::string(width[i] - c.size() + 2, ' ');
        }
        while (!s.empty() && s.back() == ' ')
            s.pop_back();
        out << s << "\n";
    };
    line(columns_, true);
    for (const auto& r : rows_)
        line(r, false);
}

void Table::printJson(std::ostream& out) const
{
    out << "[";
    for (size_t k = 0; k < rows_.size(); ++k) {
        out << (k ? ",\n " : "\n ") << "{";
        for (size_t i = 0; i < columns_.size(); ++i) {
            out << (i ? ", " : "") << jsonString(columns_[i]) << ": "
                << jsonString(i < rows_[k].size() ? rows_[k][i] : std::string());
        }
        out << "}";
    }
    out << (rows_.empty() ? "]\n" : "\n]\n");
}

}  // namespace zarcli
