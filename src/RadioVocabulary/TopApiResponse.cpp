#include "TopApiResponse.h"

namespace kro_top_api {

std::string BaseResponse::printResponse() const
{
    return "Sent\n";
}

std::string BaseResponse::getErrorString() const
{
    return m_description + ", (" + resultCodeText(m_resultCode) + ")";
}

std::string StandardResponse::printResponse() const
{
    return "StandardResponse Sent\n";
}

} // namespace kro_top_api
