#pragma once

#include <cxxabi.h>

#include <concepts>
#include <cstdlib>
#include <memory>
#include <ostream>
#include <string>
#include <typeinfo>

#include "JsonArchive.h"
#include "WireMessage.h"

namespace message_printer_detail {

inline std::string demangled(const char* mangledName)
{
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> name(abi::__cxa_demangle(mangledName, nullptr, nullptr, &status),
                                                           &std::free);
    return status == 0 && name ? std::string(name.get()) : std::string();
}

} // namespace message_printer_detail

/// Name of a message type as the protocol writes it, for example "RAULostIPC".
template <WireMessage Message>
const std::string& messageName()
{
    static const std::string name = message_printer_detail::demangled(typeid(Message).name());
    return name;
}

/// Prints an ordinary message as indented JSON: its id, its name, and its fields in wire order.
template <WireMessage Message>
requires std::derived_from<Message, SignalHeader> std::ostream& operator<<(std::ostream& os, const Message& message)
{
    cereal::JSONOutputArchive archive(os);
    archive(cereal::make_nvp("id", static_cast<std::int32_t>(Message::messageId)),
            cereal::make_nvp("name", messageName<Message>()), cereal::make_nvp("data", message));
    os.flush();
    return os;
}

/// Prints a message of the PS device as indented JSON: its group, and its fields under the mangled name of its type.
template <WireMessage Message>
requires std::derived_from<Message, PsSignalHeader> std::ostream& operator<<(std::ostream& os, const Message& message)
{
    cereal::JSONOutputArchive archive(os);
    archive(cereal::make_nvp("Id", static_cast<std::int32_t>(Message::messageId)),
            cereal::make_nvp(typeid(Message).name(), message));
    os.flush();
    return os;
}
