#include "ResultCodes.h"

#include <algorithm>
#include <array>

namespace {

struct CodeText {
    Result code;
    const char* text;
};

constexpr std::array codeTexts{
    CodeText{0x0, "eTI_S_OK"},
    CodeText{0x1, "eTI_S_TRUE"},
    CodeText{0x2, "eTI_S_FALSE"},
    CodeText{0x100, "eTI_I_INFO"},
    CodeText{0x800, "eTI_DEBUG"},
    CodeText{0x820, "eTI_DEBUG2"},
    CodeText{0x840, "eTI_DEBUG3"},
    CodeText{0x900, "eTI_I_LOG_ALWAYS"},
    CodeText{0x1000, "eTI_W_WARNING"},
    CodeText{0x1001, "eTI_W_DUPLICATE_IGNORED"},
    CodeText{0x1002, "eTI_W_NO_MORE_DATA"},
    CodeText{0x1003, "eTI_W_ALREADY_STARTED"},
    CodeText{0x1004, "eTI_W_ALREADY_INITIALIZED"},
    CodeText{0x8000, "eTI_E_FAILED"},
    CodeText{0x8001, "eTI_E_NOT_IMPLEMENTED"},
    CodeText{0x8002, "eTI_E_UNKNOWN_OBJECT"},
    CodeText{0x8003, "eTI_E_OPERATION_NOT_ALLOWED"},
    CodeText{0x8004, "eTI_E_CAN_NOT_CREATE_OBJECT"},
    CodeText{0x8005, "eTI_E_COULD_NOT_REGISTER_HANDLER_METHOD"},
    CodeText{0x8006, "eTI_E_MODULE_REGISTRATION_ERROR"},
    CodeText{0x8007, "eTI_E_FAILED_TO_REGISTER_MODULE_CALLBACK"},
    CodeText{0x8008, "eTI_E_FAILED_TO_GET_EXTERNAL_INTERFACE"},
    CodeText{0x8009, "eTI_E_INTERFACE_MANAGER_REGISTRATION_ERROR"},
    CodeText{0xA000, "eTI_E_REQUIRED_PARAMETER_INVALID"},
    CodeText{0xA001, "eTI_E_PARAMETER_TYPE_INVALID"},
    CodeText{0xA002, "eTI_E_PARAMETER_INVALID"},
    CodeText{0xA100, "eTI_E_INVALID_ARGUMENT"},
    CodeText{0xA101, "eTI_E_MALFORMED_REQUEST"},
    CodeText{0xA102, "eTI_E_REQUIRED_INPUT_MISSING"},
    CodeText{0xA200, "eTI_E_METHOD_UNKNOWN"},
};

} // namespace

const char* resultCodeText(Result result)
{
    const auto* entry =
        std::find_if(codeTexts.begin(), codeTexts.end(), [result](const CodeText& e) { return e.code == result; });
    return entry != codeTexts.end() ? entry->text : "Unknown";
}
