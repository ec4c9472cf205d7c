#pragma once

#include "Json.h"

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace simulated {

/// What tests may change about the outcome of an operation; each is a section of the state with one entry an operation.
enum class Injection { result, text, errorIndicator, delay };

/// The platform state: one JSON document, its rules, and the count of the injections that took effect. All operations may
/// be called from any thread.
class PlatformState {
public:
    explicit PlatformState(unsigned channels) { reset(channels); }

    void reset(unsigned channels);

    Json snapshot() const;

    /// @throws StateError; then nothing has been applied
    void patch(const Json& patch);

    /// Runs a function on the whole document, alone. It must not call anything that asks for the state again.
    template <class Function>
    auto withDocument(Function&& function)
    {
        const std::lock_guard lock{m_mutex};
        return std::forward<Function>(function)(m_document);
    }

    /// @return what is injected for "interface.operation", counted as a hit
    std::optional<Json> take(Injection injection, const std::string& operation);

    unsigned channels() const;

private:
    mutable std::mutex m_mutex; ///< guards the document; no callback and no delay runs under it
    Json m_document;
    unsigned m_channels = 0;
};

/// @return the part of the document that belongs to a channel; null for a channel that the unit does not have
Json* findChannel(Json& document, std::int64_t channel);

} // namespace simulated
