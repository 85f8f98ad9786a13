#include "cli/JsonList.h"

#include <utility>

namespace quorvane::cli {

void JsonList::add(std::string_view element) {
    output_.write(std::exchange(isEmpty_, false) ? "[\n" : ",\n");
    output_.write(element);
}

void JsonList::finish() {
    output_.write(isEmpty_ ? "[]\n" : "\n]\n");
}

}  // namespace quorvane::cli
