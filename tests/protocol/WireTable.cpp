#include "WireTable.h"

#include "TableFile.h"

#include <algorithm>
#include <cstdlib>

namespace {

std::string nameOfElement(const WireRow& row, std::size_t index)
{
    return row.count == 0 ? row.name : row.name + "[" + std::to_string(index) + "]";
}

/// Writes "name[COUNT*STRIDE].member" out; any other row as it stands.
void append(std::vector<WireRow>& rows, const WireRow& row)
{
    const auto open = row.name.find('[');
    if (open == std::string::npos) {
        rows.push_back(row);
        return;
    }
    const auto times = row.name.find('*');
    const auto close = row.name.find(']');
    const auto count = static_cast<std::size_t>(numberOf(row.name.substr(open + 1, times - open - 1)));
    const auto stride = static_cast<std::size_t>(numberOf(row.name.substr(times + 1, close - times - 1)));
    for (std::size_t i = 0; i < count; ++i) {
        WireRow element = row;
        element.offset += i * stride;
        element.name = row.name.substr(0, open) + ".value" + std::to_string(i) + row.name.substr(close + 1);
        rows.push_back(element);
    }
}

WireRow rowOf(const TableLine& line)
{
    const auto words = line.words();
    if (words.size() != 4 && !(words.size() == 6 && words[4] == "=")) {
        line.refuse("a field has offset, type, count, name and maybe = value");
    }
    return {static_cast<std::size_t>(numberOf(words[0])), words[1],
            words[2] == "-" ? 0 : static_cast<std::size_t>(numberOf(words[2])), words[3],
            words.size() == 6 ? numberOf(words[5]) : 0};
}

std::vector<WireTableMessage> readTable()
{
    std::map<std::string, std::vector<WireRow>> headers;
    std::vector<WireTableMessage> messages;
    std::vector<WireRow>* rows = nullptr;
    std::string prefix;
    for (const TableLine& line : linesOfTable("wire.txt")) {
        const auto words = line.words();
        if (words[0] == "header") {
            rows = &headers[words.at(1)];
            prefix = words.at(1) + ".";
        } else if (words[0] == "message") {
            messages.push_back({words.at(1), static_cast<std::uint32_t>(numberOf(words.at(2))), words.at(3),
                                words.at(4), static_cast<std::size_t>(numberOf(words.at(5))),
                                words.size() == 8 ? words[7] : "", headers.at(words[4])});
            rows = &messages.back().fields;
            prefix.clear();
        } else if (words[0] == "fresh") {
            const auto field =
                std::find_if(rows->begin(), rows->end(), [&](const WireRow& row) { return row.name == words.at(1); });
            if (field == rows->end()) {
                line.refuse("no such field yet");
            }
            field->initial = numberOf(words.at(3));
        } else {
            WireRow row = rowOf(line);
            row.name.insert(0, prefix);
            append(*rows, row);
        }
    }
    for (WireTableMessage& message : messages) {
        std::stable_sort(message.fields.begin(), message.fields.end(),
                         [](const WireRow& a, const WireRow& b) { return a.offset < b.offset; });
    }
    return messages;
}

} // namespace

std::size_t WireRow::width() const
{
    return static_cast<std::size_t>(numberOf(type.substr(1))) / 8;
}

std::string WireTableMessage::encode(const Values& values) const
{
    std::string bytes(size, '\0');
    std::size_t used = 0;
    for (const WireRow& row : fields) {
        for (std::size_t i = 0; i < row.elements(); ++i) {
            const auto value = values.find(nameOfElement(row, i));
            if (value == values.end()) {
                continue;
            }
            ++used;
            for (std::size_t byte = 0; byte < row.width(); ++byte) {
                bytes.at(row.offset + i * row.width() + byte) =
                    static_cast<char>(value->second >> (8 * (row.width() - 1 - byte)));
            }
        }
    }
    if (used != values.size()) {
        throw std::runtime_error(name + " has not all of the fields that are given");
    }
    return bytes;
}

WireTableMessage::Values WireTableMessage::decode(std::string_view bytes) const
{
    Values values;
    for (const WireRow& row : fields) {
        for (std::size_t i = 0; i < row.elements(); ++i) {
            std::uint64_t value = 0;
            for (std::size_t byte = 0; byte < row.width(); ++byte) {
                value = value << 8U | static_cast<unsigned char>(bytes.at(row.offset + i * row.width() + byte));
            }
            const std::uint64_t sign = std::uint64_t{1} << (8 * row.width() - 1);
            const bool negative = row.type.front() == 'i' && (value & sign) != 0;
            if (value != 0) {
                values[nameOfElement(row, i)] =
                    static_cast<std::int64_t>(value) - (negative ? static_cast<std::int64_t>(2 * sign) : 0);
            }
        }
    }
    return values;
}

const std::vector<WireTableMessage>& wireTable()
{
    static const std::vector<WireTableMessage> table = readTable();
    return table;
}

const WireTableMessage& wireTableMessage(const std::string& name)
{
    const auto& table = wireTable();
    const auto found =
        std::find_if(table.begin(), table.end(), [&](const auto& message) { return message.name == name; });
    if (found == table.end()) {
        throw std::runtime_error("wire.txt has no message " + name);
    }
    return *found;
}
