#include "updates/ZelkorUpdateConfiguration.h"

#include "support/Matching.h"

namespace quorvane {
namespace {

TEST(ZelkorUpdateConfigurationTest, TheFeedLiesAtAFixedPathOfTheHostAndItsSignatureBesideIt) {
    EXPECT_EQ(ZelkorUpdateConfiguration::feedURL("updates.example.org:8443"),
              "https://updates.example.org:8443/api/v1/public/app-updates/appcast.xml"
              "?app_id=quorvane&platform=linux&channel=stable");
    EXPECT_EQ(ZelkorUpdateConfiguration::signatureURL("updates.example.org"),
              "https://updates.example.org/api/v1/public/app-updates/appcast.xml.sig"
              "?app_id=quorvane&platform=linux&channel=stable");
}

TEST(ZelkorUpdateConfigurationTest, WhatIsNoHostHasNoFeed) {
    for (const char* host : {"", "http://example.org", "example.org/", "example.org?", "example.org#", "a b",
                             "user@example.org", "example.org:x", ":443", "\n"})
        EXPECT_EQ(ZelkorUpdateConfiguration::feedURL(host), std::nullopt) << host;
}

}  // namespace
}  // namespace quorvane
