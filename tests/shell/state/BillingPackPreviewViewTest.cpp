#include "shell/state/BillingPackPreviewView.h"

#include <gmock/gmock.h>
#include <vector>

namespace quorvane {
namespace {

TEST(BillingPackPreviewViewTest, CopyingTakesTheTextOnShowAndAsksForItsConfirmation) {
    std::vector<std::string> copied;
    BillingPackPreviewView view("# Report", "Hello", [&](const std::string& text) { copied.push_back(text); });
    view.copy();
    EXPECT_TRUE(view.showingCopyConfirmation());
    view.closeCopyConfirmation();
    EXPECT_FALSE(view.showingCopyConfirmation());
    view.setSelectedTab(BillingPreviewTab::email);
    view.copy();
    EXPECT_THAT(copied, testing::ElementsAre("# Report", "Hello"));
}

}  // namespace
}  // namespace quorvane
