#pragma once

#include <cstdint>
#include <string>

#include "ResultCodes.h"

namespace kro_top_api {

/// What every request to the platform's top API comes back with.
class BaseResponse {
public:
    virtual ~BaseResponse() = default;

    /// "Sent" and a line break.
    virtual std::string printResponse() const;

    /// The description, followed by the result code's text in parentheses, whatever the code is.
    std::string getErrorString() const;

    Result m_resultCode = resultOk;
    std::int32_t m_errorIndicator = 0; ///< greater than 0 when the request failed
    std::string m_description;
};

class StandardResponse : public BaseResponse {
public:
    /// "StandardResponse Sent" and a line break.
    std::string printResponse() const override;

    std::string m_text;
};

} // namespace kro_top_api
