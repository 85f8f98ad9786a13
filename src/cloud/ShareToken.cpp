#include "cloud/ShareToken.h"

#include "base/Text.h"

namespace quorvane::ShareToken {

std::string from(const Uuid& uuid) {
    std::string token = uuid.string();
    std::erase(token, '-');
    token.resize(16);
    return text::lowercased(token);
}

std::string random() {
    return from(Uuid::random());
}

}  // namespace quorvane::ShareToken
