#include "CallLog.h"

#include "ObserverSlot.h"
#include "ThreadNames.h"

#include <utility>

namespace simulated {

void CallLog::clear()
{
    const std::lock_guard lock{m_mutex};
    m_records = {};
}

std::uint64_t CallLog::begin(std::string interface, std::string operation, Json arguments)
{
    Record record{std::move(interface), std::move(operation), std::move(arguments), std::nullopt, currentThreadName()};
    ObserverSlot::instance().tell(Platform::RecordKind::call, [&record] {
        Json described;
        describe(described, record);
        return described;
    });
    const std::lock_guard lock{m_mutex};
    return m_records.push(std::move(record));
}

void CallLog::finish(std::uint64_t number, Json result)
{
    const std::lock_guard lock{m_mutex};
    if (Record* record = m_records.find(number)) {
        record->result = std::move(result);
    }
}

Json CallLog::since(std::uint64_t number) const
{
    const std::lock_guard lock{m_mutex};
    return m_records.since(number, "calls", describe);
}

void CallLog::describe(Json& entry, const Record& record)
{
    entry["interface"] = record.interface;
    entry["operation"] = record.operation;
    entry["args"] = record.arguments;
    if (record.result) {
        entry["result"] = *record.result;
    }
    entry["thread"] = record.thread;
}

} // namespace simulated
