#pragma once

#include "CallLog.h"
#include "Json.h"
#include "PlatformState.h"
#include "StopSignal.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

namespace simulated {

/// What surrounds every operation of one interface: it records the call, lets the injected delay pass, and gives the
/// injected result instead of the operation's own.
class Operations {
public:
    /// @param interface as it stands in the records
    /// @param channel   whose part of the state the effects get; 0 for the whole document
    Operations(PlatformState& state, CallLog& calls, StopSignal& stopping, std::string interface,
               std::int32_t channel = 0)
        : m_state{state}, m_calls{calls}, m_stopping{stopping}, m_interface{std::move(interface)}, m_channel{channel}
    {
    }

    /// @param arguments an object, or {} where there are none
    /// @param effect    what the operation does. One that takes a Json& gets the interface's part of the state, alone;
    ///                  one that takes nothing runs without any lock
    /// @return what the effect returns, or the injected result
    template <class Effect>
    auto run(const char* operation, Json arguments, Effect effect)
    {
        using Outcome = std::decay_t<decltype(invoke(effect))>;
        const std::string name = m_interface + "." + operation;
        const std::uint64_t call =
            m_calls.begin(m_interface, operation, arguments.is_null() ? Json::object() : std::move(arguments));
        delay(name);
        if constexpr (std::is_void_v<Outcome>) {
            invoke(effect);
            m_calls.finish(call, nullptr);
        } else {
            const std::optional<Json> injected = m_state.take(Injection::result, name);
            const Outcome outcome = injected ? injectedAs<Outcome>(*injected) : invoke(effect);
            m_calls.finish(call, outcome);
            return outcome;
        }
    }

    /// @return the text that goes with the answer of an operation, if one is injected
    std::optional<std::string> injectedText(const std::string& operation)
    {
        const std::optional<Json> text = m_state.take(Injection::text, m_interface + "." + operation);
        return text ? std::optional{text->get<std::string>()} : std::nullopt;
    }

    std::optional<std::int32_t> injectedErrorIndicator(const std::string& operation)
    {
        const std::optional<Json> indicator = m_state.take(Injection::errorIndicator, m_interface + "." + operation);
        return indicator ? std::optional{indicator->get<std::int32_t>()} : std::nullopt;
    }

private:
    template <class Effect>
    auto invoke(Effect& effect)
    {
        if constexpr (std::is_invocable_v<Effect&, Json&>) {
            return m_state.withDocument(
                [&](Json& document) { return effect(m_channel == 0 ? document : *findChannel(document, m_channel)); });
        } else {
            return effect();
        }
    }

    /// A signed result may be injected as the same bits in a u32.
    template <class Outcome>
    static Outcome injectedAs(const Json& injected)
    {
        const auto value = injected.get<std::int64_t>();
        if constexpr (std::is_same_v<Outcome, bool>) {
            return value != 0;
        } else {
            static_assert(std::is_same_v<Outcome, std::uint32_t> || std::is_same_v<Outcome, int>);
            return static_cast<Outcome>(value);
        }
    }

    void delay(const std::string& name)
    {
        if (const auto milliseconds = m_state.take(Injection::delay, name)) {
            m_stopping.sleepFor(std::chrono::milliseconds{milliseconds->get<std::uint32_t>()});
        }
    }

    PlatformState& m_state;
    CallLog& m_calls;
    StopSignal& m_stopping;
    std::string m_interface;
    std::int32_t m_channel;
};

} // namespace simulated
