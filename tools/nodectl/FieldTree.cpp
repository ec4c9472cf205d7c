#include "FieldTree.h"

#include <algorithm>

namespace nodectl {

namespace {

void insert(FieldTree& group, std::string_view rest, const MessageField& field)
{
    const std::size_t dot = rest.find('.');
    const std::string name(rest.substr(0, dot));
    if (group.members.empty() || group.members.back().name != name) {
        group.members.push_back({name, group.path.empty() ? name : group.path + "." + name, std::nullopt, {}});
    }
    FieldTree& member = group.members.back();
    if (dot == std::string_view::npos) {
        member.field = field;
    } else {
        insert(member, rest.substr(dot + 1), field);
    }
}

} // namespace

const FieldTree* FieldTree::find(std::string_view member) const
{
    const auto found =
        std::find_if(members.begin(), members.end(), [member](const FieldTree& e) { return e.name == member; });
    return found != members.end() ? &*found : nullptr;
}

std::vector<std::string> FieldTree::memberNames() const
{
    std::vector<std::string> names;
    for (const FieldTree& member : members) {
        names.push_back(member.name);
    }
    return names;
}

FieldTree fieldTree(AnyMessage& message)
{
    FieldTree root;
    for (const MessageField& field : message.fields()) {
        insert(root, field.name(), field);
    }
    return root;
}

} // namespace nodectl
