#pragma once

#include "Json.h"
#include "RecordRing.h"

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>

namespace simulated {

/// What the module called on the platform, oldest first. All operations may be called from any thread.
class CallLog {
public:
    void clear();

    /// Records a call of the current thread that has just come in.
    /// @return its number
    std::uint64_t begin(std::string interface, std::string operation, Json arguments);

    /// Adds the result once the call has taken effect.
    void finish(std::uint64_t number, Json result);

    Json since(std::uint64_t number) const;

private:
    struct Record {
        std::string interface;
        std::string operation;
        Json arguments;
        std::optional<Json> result; ///< none while the call is under way
        std::string thread;
    };

    static void describe(Json& entry, const Record& record);

    mutable std::mutex m_mutex;
    RecordRing<Record> m_records;
};

} // namespace simulated
