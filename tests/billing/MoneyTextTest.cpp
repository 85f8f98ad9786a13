#include "billing/MoneyText.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace quorvane {
namespace {

TEST(MoneyTextTest, WritesMoneyAsTheLocaleDoesAndStrangeCodesBehindTheNumber) {
    const std::tuple<const char*, double, const char*, const char*> rows[] = {
        {"en_US.UTF-8", 6639.25, "EUR", "€6,639.25"},
        {"en_US.UTF-8", 0, "USD", "$0.00"},
        {"en_US.UTF-8", 1234.5, "JPY", "¥1,234"},
        {"de_DE.UTF-8", 6639.25, "EUR", "6.639,25\u00A0€"},
        {"zh_CN.UTF-8", 85, "CNY", "¥85.00"},
        {"C.UTF-8", 6639.25, "USD", "$6,639.25"},
        {"en_US.UTF-8", 6639.25, "Euros", "6639.25 Euros"},
        {"en_US.UTF-8", 2, "", "2.00 "},
    };
    for (const auto& [locale, amount, currency, expected] : rows) {
        setenv("LC_ALL", locale, 1);
        EXPECT_EQ(moneyText(amount, currency), expected) << locale << ' ' << currency;
    }
    setenv("LC_ALL", "en_US.UTF-8", 1);  // what tests have
}

}  // namespace
}  // namespace quorvane
