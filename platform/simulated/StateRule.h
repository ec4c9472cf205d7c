#pragma once

#include "Json.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace simulated {

/// What may stand at one place of the platform state, and what stands there by default.
class StateRule {
public:
    using Members = std::vector<std::pair<std::string, StateRule>>;

    static StateRule flag(bool byDefault);

    /// A number with the full range of its platform type.
    template <class Number>
    static StateRule number(Number byDefault)
    {
        StateRule rule{Kind::number, byDefault};
        rule.m_lowest = std::numeric_limits<Number>::min();
        rule.m_highest = std::numeric_limits<Number>::max();
        return rule;
    }

    /// UTF-8 of at most this many bytes.
    static StateRule text(std::size_t widest, std::string byDefault);
    static StateRule anyText();

    static StateRule list(std::size_t shortest, std::size_t longest, StateRule element, Json byDefault);

    /// Keys may be left out of a patch.
    static StateRule object(Members members);

    /// An element of a list: lists are exchanged as a whole, so every key must be there.
    static StateRule record(Members members);

    /// Refuses a merge patch that would put anything wrong here.
    /// @param path of this place, for the error
    /// @throws StateError
    void check(const std::string& path, const Json& patch) const;

    /// The same for one member of an object, whose path this is.
    void checkMember(const std::string& path, const std::string& key, const Json& patch) const;

    /// Applies a patch that check() has let through. A key that the target does not have is a channel that the unit does
    /// not have, and is left out.
    void apply(Json& target, const Json& patch) const;

    const Json& byDefault() const { return m_default; }

private:
    enum class Kind { flag, number, text, list, object, record };

    StateRule(Kind kind, Json byDefault) : m_kind{kind}, m_default(std::move(byDefault)) {}

    void checkNumber(const std::string& path, const Json& patch) const;
    void checkList(const std::string& path, const Json& patch) const;
    void checkMembers(const std::string& path, const Json& patch) const;
    const StateRule* member(const std::string& key) const;

    Kind m_kind;
    Json m_default;
    std::int64_t m_lowest = 0;  ///< of a number; fewest elements of a list
    std::int64_t m_highest = 0; ///< of a number; most elements of a list, most bytes of a text
    std::vector<StateRule> m_element;
    Members m_members;
};

/// Path of a member: the names with dots between them.
std::string memberPath(const std::string& path, const std::string& key);

/// @throws StateError that the key at this path is unknown, with the nearest of the known ones
[[noreturn]] void refuseUnknown(const std::string& path, const std::string& key, const std::vector<std::string>& known);

/// @throws StateError that something else was expected at this path
[[noreturn]] void refuseType(const std::string& path, const std::string& expected, const Json& got);

/// @throws StateError unless this is an integer within the range
void checkRange(const std::string& path, const Json& value, std::int64_t lowest, std::int64_t highest);

} // namespace simulated
