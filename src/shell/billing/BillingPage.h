#pragma once

#include "shell/signals/Keeps.h"
#include "shell/state/BillingDashboardView.h"

#include <QWidget>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class QBoxLayout;
class QVBoxLayout;

namespace quorvane {

class FigureCard;
struct BillingPageParts;

/// The billing section: filters, the three steps, figures, the projects' lines and the four ways out. It scrolls as a
/// whole.
class BillingPage : private Keeps<BillingPageParts>, public QWidget {
public:
    /// All of it outlives the page.
    struct Services {
        ModelContainer& store;
        platform::RunLoop& runLoop;
        const Localization& localization;
        ConsoleSink& console;
    };

    /// The sheets and panels that it opens. One that is empty is passed over.
    struct Options {
        /// With the records that wait, newest first.
        std::function<void(const std::vector<std::shared_ptr<ActivityRecord>>& records)> openReviewQueue;
        std::function<void(const std::shared_ptr<Project>& project)> openProjectEditor;
        std::function<void(const std::string& pack, const std::string& email)> openPreview;
        /// Asks for a file, with the name to propose; empty for the desktop's chooser.
        std::function<void(const std::string& fileName, std::function<void(const std::filesystem::path&)> chosen)>
            chooseFile;
    };

    BillingPage(const Services& services, Options options, QWidget* parent = nullptr);
    ~BillingPage() override;

    [[nodiscard]] BillingDashboardView& dashboard();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] BillingDashboardView::Presenter presenter();
    void build();
    void addHead(QVBoxLayout& column);
    void addFigures(QVBoxLayout& column);
    [[nodiscard]] QBoxLayout* cardRow(const std::array<FigureCard*, 3>& cards, bool hasChevrons);
    [[nodiscard]] QWidget* reviewBar();
    void addTable(QVBoxLayout& column);
    void keepMargins();
    void follow();
    void addShortcuts();
    void refresh();
    void warnBeforeExport(std::size_t count);
    void chooseFile(const BillingMarkdownDocument& document, const std::string& fileName);
};

}  // namespace quorvane
