#pragma once

#include "Json.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <utility>

namespace simulated {

/// The last records of something, numbered from 0 without gaps. Not locked: its owner is.
template <class Record>
class RecordRing {
public:
    /// How many are kept.
    static constexpr std::size_t capacity = 10'000;

    /// @return the record's number
    std::uint64_t push(Record record)
    {
        if (m_records.size() == capacity) {
            m_records.pop_front();
            ++m_first;
        }
        m_records.push_back(std::move(record));
        return m_first + m_records.size() - 1;
    }

    /// @return null when the record has gone
    Record* find(std::uint64_t number)
    {
        const std::uint64_t index = number - m_first;
        return number >= m_first && index < m_records.size() ? &*at(m_records, index) : nullptr;
    }

    /// @return {"next":…, listName:[…]} from the number on, "dropped" where some of them have gone
    /// @param describe adds a record to the object that holds its number
    template <class Describe>
    Json since(std::uint64_t number, const char* listName, Describe describe) const
    {
        Json list = Json::array();
        const std::uint64_t next = m_first + m_records.size();
        for (std::uint64_t i = number < m_first ? m_first : number; i < next; ++i) {
            Json entry{{"seq", i}};
            describe(entry, *at(m_records, i - m_first));
            list.push_back(std::move(entry));
        }
        Json answer{{"next", next}, {listName, std::move(list)}};
        if (number < m_first) {
            answer["dropped"] = m_first - number;
        }
        return answer;
    }

private:
    template <class Records>
    static auto at(Records& records, std::uint64_t index)
    {
        return records.begin() + static_cast<std::ptrdiff_t>(index);
    }

    std::deque<Record> m_records;
    std::uint64_t m_first = 0; ///< number of the oldest record that is left
};

} // namespace simulated
