#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "MessageCatalogue.h"

namespace nodectl {

/// The fields of a message as they nest in its printed form: groups with members, and fields at the leaves.
struct FieldTree {
    std::string name;
    std::string path;                  ///< with the names of the groups around it, each with its dot
    std::optional<MessageField> field; ///< empty for a group
    std::vector<FieldTree> members;

    bool isListOfGroups() const { return !members.empty() && members.front().name == "value0"; }
    const FieldTree* find(std::string_view member) const;
    std::vector<std::string> memberNames() const;
};

/// The root stands for the message; its first member is the header. Fields refer to the message object.
FieldTree fieldTree(AnyMessage& message);

} // namespace nodectl
