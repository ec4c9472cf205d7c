#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "MessageCatalogue.h"
#include "archives/WireFields.h"

/// Walks a message's `serialize` and lists its fields. Groups give their members as "group.member"; the elements of an
/// array of groups are groups named as in print, "value0" and so on.
class FieldLister {
public:
    template <class... Fields>
    FieldLister& operator()(Fields&&... fields) // a visit: nothing is moved from
    {
        (list(fields.name, fields.value), ...);
        return *this;
    }

    std::vector<MessageField> take() { return std::move(m_fields); }

private:
    template <class Value>
    void list(const std::string& name, Value& value)
    {
        using namespace cereal::binary_big_endian_detail;
        if constexpr (std::is_integral_v<Value> || std::is_enum_v<Value>) {
            add(name, typeOf<typename UnderlyingInteger<Value>::Type>(), std::nullopt, &value);
        } else if constexpr (isArrayOfIntegers<Value>) {
            add(name, typeOf<typename Value::value_type>(), value.size(), value.data());
        } else if constexpr (isArray<Value>) {
            inGroup(name, [&] {
                std::size_t index = 0;
                for (auto& element : value) {
                    list("value" + std::to_string(index++), element);
                }
            });
        } else {
            inGroup(name, [&] { value.serialize(*this); });
        }
    }

    template <class Function>
    void inGroup(const std::string& name, Function function)
    {
        const std::size_t outer = m_group.size();
        m_group += name + ".";
        function();
        m_group.resize(outer);
    }

    void add(const std::string& name, FieldType type, std::optional<std::size_t> count, void* data)
    {
        m_fields.emplace_back(m_group + name, type, m_offset, count, data);
        m_offset += m_fields.back().size();
    }

    template <class Integer>
    static constexpr FieldType typeOf()
    {
        constexpr bool isSigned = std::is_signed_v<Integer>;
        if constexpr (sizeof(Integer) == 1) {
            return isSigned ? FieldType::i8 : FieldType::u8;
        } else if constexpr (sizeof(Integer) == 2) {
            return isSigned ? FieldType::i16 : FieldType::u16;
        } else {
            static_assert(sizeof(Integer) == 4);
            return isSigned ? FieldType::i32 : FieldType::u32;
        }
    }

    std::string m_group; ///< names of the groups around the current field, each with its dot
    std::size_t m_offset = 0;
    std::vector<MessageField> m_fields;
};

template <class Message>
std::vector<MessageField> listFields(Message& message)
{
    FieldLister lister;
    message.serialize(lister);
    return lister.take();
}
