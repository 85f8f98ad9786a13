#include "billing/TextDocuments.h"

#include "base/AtomicFile.h"
#include "base/Text.h"

namespace quorvane {

CSVDocument CSVDocument::read(const std::optional<std::string>& bytes) {
    if (!bytes || bytes->empty()) throw FileError("The file is corrupt: it is empty");
    if (text::validUtf8(*bytes) != *bytes) throw FileError("The file is corrupt: it is no text in UTF-8");
    return {*bytes};
}

BillingMarkdownDocument BillingMarkdownDocument::read(const std::string& bytes) {
    return {text::validUtf8(bytes)};
}

}  // namespace quorvane
