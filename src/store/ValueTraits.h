#pragma once

#include "base/Date.h"
#include "base/Uuid.h"
#include "store/SqlValue.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvane {

/// What an attribute holds; it decides the column's type and the form in JSON.
enum class AttributeKind { uuid, date, text, real, integer, boolean, uuidList, reference };

/// How a C++ type is kept in a column: `kind`, `isOptional`, `toSql`, and `fromSql`, which reads what can't be
/// understood as the type's empty value.
template <class T>
struct ValueTraits;

template <>
struct ValueTraits<Uuid> {
    static constexpr auto kind = AttributeKind::uuid;
    static constexpr bool isOptional = false;
    static SqlValue toSql(const Uuid& value);
    static Uuid fromSql(const SqlValue& value);
};

template <>
struct ValueTraits<Date> {
    static constexpr auto kind = AttributeKind::date;
    static constexpr bool isOptional = false;
    static SqlValue toSql(Date value);
    static Date fromSql(const SqlValue& value);
};

template <>
struct ValueTraits<std::string> {
    static constexpr auto kind = AttributeKind::text;
    static constexpr bool isOptional = false;
    static SqlValue toSql(const std::string& value) { return value; }
    static std::string fromSql(const SqlValue& value);
};

template <>
struct ValueTraits<double> {
    static constexpr auto kind = AttributeKind::real;
    static constexpr bool isOptional = false;
    static SqlValue toSql(double value);
    static double fromSql(const SqlValue& value);
};

template <>
struct ValueTraits<std::int64_t> {
    static constexpr auto kind = AttributeKind::integer;
    static constexpr bool isOptional = false;
    static SqlValue toSql(std::int64_t value) { return value; }
    static std::int64_t fromSql(const SqlValue& value);
};

template <>
struct ValueTraits<bool> {
    static constexpr auto kind = AttributeKind::boolean;
    static constexpr bool isOptional = false;
    static SqlValue toSql(bool value) { return std::int64_t{value}; }
    static bool fromSql(const SqlValue& value);
};

/// A JSON array of the texts of the identifiers.
template <>
struct ValueTraits<std::vector<Uuid>> {
    static constexpr auto kind = AttributeKind::uuidList;
    static constexpr bool isOptional = false;
    static SqlValue toSql(const std::vector<Uuid>& value);
    static std::vector<Uuid> fromSql(const SqlValue& value);
};

template <class T>
struct ValueTraits<std::optional<T>> {
    static constexpr auto kind = ValueTraits<T>::kind;
    static constexpr bool isOptional = true;
    static SqlValue toSql(const std::optional<T>& value) { return value ? ValueTraits<T>::toSql(*value) : SqlValue{}; }
    static std::optional<T> fromSql(const SqlValue& value) {
        if (isNull(value)) return std::nullopt;
        return ValueTraits<T>::fromSql(value);
    }
};

}  // namespace quorvane
