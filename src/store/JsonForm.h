#pragma once

#include "base/Uuid.h"
#include "store/Database.h"
#include "store/EntityDescription.h"
#include "store/JsonLine.h"

#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>

/// How rows of the store look in JSON: keys in snake case, instants in ISO 8601 with microseconds, identifiers in upper
/// case, what is absent as null.
namespace quorvane::JsonForm {

/// The identifiers of a table's objects by their row.
using RowIds = std::unordered_map<std::int64_t, Uuid>;

/// Appends the text between double quotes. Bytes that are no UTF-8 become U+FFFD.
void appendString(std::string& out, std::string_view text);

/// Appends the column's value. A reference is written as the identifier that `targets` has for its row.
void appendValue(std::string& out, const AttributeDescription& attribute, const Row& row, int column,
                 const RowIds& targets);

/// Appends the row as one object, "entity" first; its columns are the entity's attributes in their order.
void appendObject(std::string& out, const EntityDescription& entity, const Row& row, const RowIds& targets);

/// The same of an object, whether stored or not; a reference leads to an object with one of the rows in `targets`.
void appendObject(std::string& out, const Entity& object, const RowIds& targets);

/// The names of the attributes in their order, as `ModelContext::scan` takes them for `appendObject`.
[[nodiscard]] std::vector<std::string> attributeNames(const EntityDescription& entity);

/// A value that does not fit its attribute; `what()` names both.
class Error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The column's value for a value in JSON; of a reference the identifier of its target, as a blob. Throws `Error`.
[[nodiscard]] SqlValue readValue(const AttributeDescription& attribute, const JsonLine::Value& value);

/// The columns for a line's values in the order of the attributes, references as `readValue` gives them. What the line
/// leaves out takes its default; "entity" is passed over. Throws `Error`, also for a key that the entity lacks.
[[nodiscard]] std::vector<SqlValue> readObject(const EntityDescription& entity, const JsonLine& line);

}  // namespace quorvane::JsonForm
