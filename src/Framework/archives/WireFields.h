#pragma once

#include <array>
#include <cereal/cereal.hpp>
#include <cstddef>
#include <type_traits>

#include "archives/ByteOrder.h"

/// The quick way between fields and wire bytes: where a whole `archive(...)` call fits into the buffer at hand, its
/// fields are walked with a bare pointer, without a check and without a call for each of them. The archives use it; where
/// it does not fit, they go field by field through their saveBinary and loadBinary, which report what is missing.
namespace cereal::binary_big_endian_detail {

/// A record whose `serialize` names each of its fields at most once, so that it never needs more room on the wire than
/// in memory. Says so with `static constexpr bool everyFieldOnce = true`; the bases of all messages do.
template <class T>
concept EveryFieldOnce = requires
{
    requires T::everyFieldOnce;
};

/// Most bytes that a value of type T takes on the wire; 0 where that is not known beforehand.
template <class T>
struct WireRoom {
    static constexpr std::size_t value = [] {
        if constexpr (std::is_arithmetic_v<T> || std::is_enum_v<T> || EveryFieldOnce<T>) {
            return sizeof(T);
        } else {
            return std::size_t{0};
        }
    }();
};

template <class T, std::size_t N>
struct WireRoom<std::array<T, N>> {
    static constexpr std::size_t value = N * WireRoom<T>::value;
};

template <class T>
struct WireRoom<NameValuePair<T>> {
    static constexpr std::size_t value = WireRoom<std::remove_cvref_t<T>>::value;
};

template <class T>
inline constexpr std::size_t wireRoom = WireRoom<std::remove_cvref_t<T>>::value;

template <class T>
inline constexpr bool isNameValuePair = false;
template <class T>
inline constexpr bool isNameValuePair<NameValuePair<T>> = true;

template <class T>
inline constexpr bool isArrayOfIntegers = false;
template <class T, std::size_t N>
inline constexpr bool isArrayOfIntegers<std::array<T, N>> = std::is_integral_v<T> && !std::is_same_v<T, bool>;

template <class T>
inline constexpr bool isArray = false;
template <class T, std::size_t N>
inline constexpr bool isArray<std::array<T, N>> = true;

template <class T>
struct UnderlyingInteger {
    using Type = T;
};
template <class T>
requires std::is_enum_v<T>
struct UnderlyingInteger<T> {
    using Type = std::underlying_type_t<T>;
};
template <>
struct UnderlyingInteger<bool> {
    using Type = std::uint8_t;
};

/// Writes fields to a block that has room for all of them.
class FieldWriter {
public:
    explicit FieldWriter(char* next) : m_next(next) {}

    char* position() const { return m_next; }

    template <class... Fields>
    FieldWriter& operator()(Fields&&... fields) // a visit: nothing is moved from
    {
        (write(fields), ...);
        return *this;
    }

private:
    template <class Field>
    void write(const Field& field)
    {
        if constexpr (isNameValuePair<Field>) {
            write(field.value);
        } else if constexpr (std::is_arithmetic_v<Field> || std::is_enum_v<Field>) {
            const auto value = static_cast<typename UnderlyingInteger<Field>::Type>(field);
            writeBlock<sizeof value>(&value, sizeof value);
        } else if constexpr (isArrayOfIntegers<Field>) {
            writeBlock<sizeof(typename Field::value_type)>(field.data(), sizeof field);
        } else if constexpr (isArray<Field>) {
            for (const auto& element : field) {
                write(element);
            }
        } else {
            const_cast<Field&>(field).serialize(*this); // serialize serves both directions
        }
    }

    template <std::size_t N>
    void writeBlock(const void* data, std::size_t size)
    {
        copySwapped<N>(m_next, static_cast<const char*>(data), size);
        m_next += size;
    }

    char* m_next;
};

/// Reads fields from a block that holds all of them.
class FieldReader {
public:
    explicit FieldReader(const char* next) : m_next(next) {}

    const char* position() const { return m_next; }

    template <class... Fields>
    FieldReader& operator()(Fields&&... fields) // a visit: nothing is moved from
    {
        (read(fields), ...);
        return *this;
    }

private:
    template <class Field>
    void read(Field& field)
    {
        if constexpr (isNameValuePair<std::remove_const_t<Field>>) {
            read(field.value);
        } else if constexpr (std::is_arithmetic_v<Field> || std::is_enum_v<Field>) {
            typename UnderlyingInteger<Field>::Type value{};
            readBlock<sizeof value>(&value, sizeof value);
            field = static_cast<Field>(value);
        } else if constexpr (isArrayOfIntegers<Field>) {
            readBlock<sizeof(typename Field::value_type)>(field.data(), sizeof field);
        } else if constexpr (isArray<Field>) {
            for (auto& element : field) {
                read(element);
            }
        } else {
            field.serialize(*this);
        }
    }

    template <std::size_t N>
    void readBlock(void* data, std::size_t size)
    {
        copySwapped<N>(static_cast<char*>(data), m_next, size);
        m_next += size;
    }

    const char* m_next;
};

} // namespace cereal::binary_big_endian_detail
