#include "shell/praise/ShareImageSheet.h"

#include "base/AtomicFile.h"
#include "shell/cards/ShareImageGenerator.h"
#include "shell/look/Alert.h"
#include "shell/look/Card.h"
#include "shell/look/Controls.h"
#include "shell/look/Label.h"
#include "shell/look/Sheet.h"
#include "shell/look/Theme.h"
#include "shell/praise/CardChoices.h"
#include "shell/praise/CardPicture.h"
#include "shell/praise/CardPreview.h"
#include "shell/signals/Subscribe.h"

#include <QBoxLayout>
#include <QClipboard>
#include <QGuiApplication>
#include <QResizeEvent>
#include <QTimer>
#include <QVBoxLayout>
#include <utility>

namespace quorvane::ShareImageSheet {
namespace {

constexpr int besideFrom = 760;
constexpr int wholeFrom = 1000;
constexpr int previewWidth = 456;
constexpr int leastPreviewWidth = 240;
constexpr int aboveHeight = 380;
constexpr int sheetWidth = 1080;
constexpr int sheetHeight = 760;
constexpr double previewScale = 80.0 / 600;  // the carousel's
constexpr int frame = 16;                    // milliseconds

/// The card beside the choices, or above them where there is too little width for both.
class ShareImageBody : public QWidget {
public:
    ShareImageBody(QWidget& preview, QWidget& choices)
        : preview_(preview), choices_(choices), layout_(new QBoxLayout(QBoxLayout::LeftToRight, this)) {
        layout_->setContentsMargins(0, 0, 0, 0);
        layout_->setSpacing(0);
        layout_->addWidget(&preview);
        layout_->addWidget(&choices, 1);
    }

protected:
    void resizeEvent(QResizeEvent* event) override {
        const int width = event->size().width();
        const bool isBeside = width >= besideFrom;
        layout_->setDirection(isBeside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
        if (isBeside) {
            const int forChoices = std::max(wholeFrom - previewWidth, choices_.minimumSizeHint().width());
            preview_.setFixedWidth(std::clamp(width - forChoices, leastPreviewWidth, previewWidth));
            preview_.setMinimumHeight(0);
            preview_.setMaximumHeight(QWIDGETSIZE_MAX);
        } else {
            preview_.setMinimumWidth(0);
            preview_.setMaximumWidth(QWIDGETSIZE_MAX);
            preview_.setFixedHeight(aboveHeight);
        }
        QWidget::resizeEvent(event);
    }

private:
    QWidget& preview_;
    QWidget& choices_;
    QBoxLayout* layout_;
};

class CardSheet : public Sheet {
public:
    CardSheet(QWidget& window, ShareImageWindow::Inputs inputs, Services services)
        : Sheet(window, qt(services.localization.text("share_card_preview_title")), sheetWidth, sheetHeight),
          window_(window), services_(std::move(services)), generator_(services_.localization),
          state_(
              std::move(inputs),
              [this](const ShareImageConfig& config, double scale) {
                  return generator_.generateShareImage(config, scale);
              },
              previewScale * window.devicePixelRatioF(), services_.runLoop, services_.console),
          preview_(new CardPreview), choices_(new CardChoices(state_, services_.localization)) {
        body().setContentsMargins(1, 0, 1, 0);
        body().setSpacing(0);
        body().addWidget(new Separator);
        body().addWidget(new ShareImageBody(*preview_, *choices_), 1);
        addHeadButtons();
        addFoot();
        subscribe(state_.changed, *this, [this] { follow(); });
        connect(this, &QDialog::finished, this, [this] { state_.close(); });
        timer_.setInterval(frame);
        connect(&timer_, &QTimer::timeout, this, [this] {
            if (!state_.renderNext()) timer_.stop();
        });
        follow();
    }

private:
    [[nodiscard]] QString text(MessageKey<> key) const { return qt(services_.localization.text(key)); }

    void addHeadButtons() {
        auto* const another = pushButton(text("ui_another_message"));
        another->setIcon(icon(QStringLiteral("shuffle")));
        connect(another, &QAbstractButton::clicked, this, [this] { state_.shuffle(); });
        auto* const refresh = iconButton(QStringLiteral("refresh"), text("refresh"), "plain");
        connect(refresh, &QAbstractButton::clicked, this, [this] { state_.generateImage(); });
        addToHead(another);
        addToHead(refresh);
    }

    void addFoot() {
        addToFootStart(new Label(QStringLiteral("600 × 900 PNG"), TypeRole::labelPlain, &Theme::text2));
        addToFootStart(new QWidget);  // keeps the buttons at the end
        share_ = pushButton(text("share_card_share"));
        share_->setIcon(icon(QStringLiteral("share")));
        connect(share_, &QAbstractButton::clicked, this, [this] { state_.share(); });
        save_ = pushButton(text("share_card_save_image"), "primary");
        save_->setIcon(icon(QStringLiteral("save")));
        connect(save_, &QAbstractButton::clicked, this, [this] { askForFile(); });
        addAction(share_);
        addAction(save_);
    }

    void follow() {
        const Localization& texts = services_.localization;
        preview_->show(state_.generatedImage(), qt(state_.placeholder(texts)));
        preview_->setAccessibleName(qt(texts.text("a11y_card_preview", nameOf(state_.selectedStyle(), texts),
                                                  nameOf(state_.selectedColorScheme(), texts))));
        preview_->setAccessibleDescription(qt(state_.currentPraiseMessage()));
        const bool hasImage = state_.generatedImage() != nullptr;
        share_->setEnabled(hasImage);
        save_->setEnabled(hasImage);
        choices_->follow();
        if (!timer_.isActive() && state_.isPresented()) timer_.start();
        if (state_.showingShareSheet()) copy();
    }

    /// The clipboard is how a picture gets into any other program here.
    void copy() {
        state_.endSharing();
        QGuiApplication::clipboard()->setImage(pictureOf(*state_.generatedImage()).copy());
        Toast::show(window_, text("billing_preview_copied_title"), text("ui_share_card_copied_message"));
    }

    void askForFile() {
        if (state_.generatedImage() == nullptr) return;
        const SaveDialog::Content content{.title = text("share_card_save_image"),
                                          .fileName = qt(state_.suggestedFileName(services_.localization)),
                                          .mimeType = QStringLiteral("image/png")};
        const auto write = [this, image = state_.generatedImage()](const std::filesystem::path& file) {
            save(*image, file);
        };
        if (services_.chooseFile)
            services_.chooseFile(*this, content, write);
        else
            SaveDialog::open(*this, content, write);
    }

    void save(const ShareImage& image, const std::filesystem::path& file) {
        try {
            writeFileAtomically(file, pngOf(image));
        } catch (const FileError& error) {
            Alert::show(window_, {.title = text("ui_share_card_save_failed"),
                                  .text = QString::fromUtf8(error.what()),
                                  .iconName = QStringLiteral("warn"),
                                  .choices = {{.text = text("close")}}});
        }
    }

    QWidget& window_;
    Services services_;
    ShareImageGenerator generator_;
    ShareImageWindow state_;
    CardPreview* preview_;
    CardChoices* choices_;
    QPushButton* share_ = nullptr;
    QPushButton* save_ = nullptr;
    QTimer timer_;
};

}  // namespace

Sheet& open(QWidget& window, ShareImageWindow::Inputs inputs, const Services& services) {
    auto* const sheet = new CardSheet(window, std::move(inputs), services);
    sheet->open();
    return *sheet;
}

}  // namespace quorvane::ShareImageSheet
