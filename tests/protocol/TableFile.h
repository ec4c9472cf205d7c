#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

/// A line of a table file without its comment and the blanks around it, and where it stands.
struct TableLine {
    std::string text;
    std::string place; ///< "wire.txt:12"

    /// Its words; what stands between double quotes is one, without the quotes.
    std::vector<std::string> words() const;

    [[noreturn]] void refuse(const std::string& reason) const
    {
        throw std::runtime_error(place + ": " + reason + ": " + text);
    }
};

/// The lines of a table in this folder that say something.
std::vector<TableLine> linesOfTable(const std::string& fileName);

/// The lines below a heading "[name]" of such a table.
std::vector<TableLine> linesOfSection(const std::string& fileName, const std::string& section);

/// Decimal, or hexadecimal behind 0x.
std::int64_t numberOf(const std::string& word);
