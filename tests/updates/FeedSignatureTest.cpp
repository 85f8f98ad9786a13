#include "updates/FeedSignature.h"

#include "support/Matching.h"
#include "updates/SignedFeed.h"

namespace quorvane {
namespace {

TEST(FeedSignatureTest, HoldsForTheExactBytesAndTheKeyAlone) {
    const std::string feed = feedOf(feedItem("1.0", "1"));
    const std::string good = signatureOf(feed);
    const auto key = FeedSignature::publicKey(testPublicKey());
    ASSERT_TRUE(key);
    const std::tuple<const char*, std::string, std::string, bool> rows[] = {
        {"right", feed, good, true},
        {"with a line end, as files have", feed, good + "\r\n", true},
        {"a byte more", feed + " ", good, false},
        {"nothing signed", "", good, false},
        {"another's", feed, signatureOf(feed, 2), false},
        {"none", feed, "", false},
        {"cut off", feed, good.substr(0, 84), false},
        {"too long", feed, good + good, false},
        {"no base64", feed, "<html>", false},
        {"all zero", feed, std::string(86, 'A') + "==", false},
    };
    for (const auto& [name, bytes, signature, expected] : rows)
        EXPECT_EQ(FeedSignature::verifies(bytes, signature, *key), expected) << name;
    for (const char* text : {"", "AAAA", "no key", "AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA"})
        EXPECT_FALSE(FeedSignature::publicKey(text)) << text;
}

TEST(FeedSignatureTest, HoldsForWhatTheDocumentedCommandsSign) {
    const auto key = FeedSignature::publicKey("ojnK/r/LCGSZZ8GTY4Y/esDcyWU5ea75ckpLJ0aHM4M=");
    ASSERT_TRUE(key);
    EXPECT_TRUE(FeedSignature::verifies(
        "<rss><channel/></rss>\n",
        "e/VLrDomswRHAIT/rmd+UcUGWc7/+RQ0T0CMNIvt6zpYrwPvRGxdkLjgKvwAj/8eTsGsyce+if85zApod3GkDg==", *key));
}

}  // namespace
}  // namespace quorvane
