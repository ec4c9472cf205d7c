#include "Json.h"

namespace simulated {

std::string toText(const Json& json, int indent)
{
    return json.dump(indent, ' ', false, Json::error_handler_t::replace);
}

} // namespace simulated
