#include "store/SqlValue.h"

namespace quorvane {
namespace {

template <class T>
int threeWay(const T& a, const T& b) {
    return a < b ? -1 : (b < a ? 1 : 0);
}

bool isNumber(const SqlValue& value) {
    return value.index() == 1 || value.index() == 2;
}

double number(const SqlValue& value) {
    if (const auto* integer = std::get_if<std::int64_t>(&value)) return static_cast<double>(*integer);
    return std::get<double>(value);
}

}  // namespace

int compare(const SqlValue& a, const SqlValue& b) {
    if (a.index() != b.index()) {
        if (isNumber(a) && isNumber(b)) return threeWay(number(a), number(b));
        return threeWay(a.index(), b.index());
    }
    // std::string compares as unsigned bytes do, and so does the database.
    return threeWay(a, b);
}

}  // namespace quorvane
