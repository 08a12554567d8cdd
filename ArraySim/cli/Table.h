// Table.h - output of zarcli: aligned text tables, or JSON for scripts.
#ifndef ZARCLI_TABLE_H
#define ZARCLI_TABLE_H

#include <ostream>
#include <string>
#include <vector>

namespace zarcli {

class Table {
public:
    explicit Table(std::vector<std::string> columns) : columns_(std::move(columns)) {}
    void add(std::vector<std::string> row) { rows_.push_back(std::move(row)); }
    size_t size() const { return rows_.size(); }

    // Columns padded to their widest cell, headers in upper case.
    void printText(std::ostream& out) const;
    // An array of objects keyed by the column names.
    void printJson(std::ostream& out) const;

private:
    std::vector<std::string> columns_;
    std::vector<std::vector<std::string>> rows_;
};

// A JSON string literal of s.
std::string jsonString(const std::string& s);

}  // namespace zarcli

#endif
