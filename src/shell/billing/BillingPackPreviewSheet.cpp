#include "shell/billing/BillingPackPreviewSheet.h"

#include "shell/look/Alert.h"
#include "shell/look/Controls.h"
#include "shell/look/Label.h"
#include "shell/look/Sheet.h"
#include "shell/look/Theme.h"
#include "shell/signals/Subscribe.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTextBlockFormat>
#include <QTextEdit>
#include <QVBoxLayout>

namespace quorvane::BillingPackPreviewSheet {
namespace {

constexpr int sheetWidth = 820;
constexpr int sheetHeight = 672;

QTextEdit* documentView() {
    auto* const view = kind("quiet", new QTextEdit);
    view->document()->setDocumentMargin(12);
    view->setReadOnly(true);
    view->setTabChangesFocus(true);
    view->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    return view;
}

void showDocument(QTextEdit& view, const QString& text, TypeRole role) {
    view.setFont(font(role));
    view.setPlainText(text);
    QTextCursor all(view.document());
    all.select(QTextCursor::Document);
    QTextBlockFormat lines;
    lines.setLineHeight(lineHeight(role), QTextBlockFormat::FixedHeight);
    all.mergeBlockFormat(lines);
    view.moveCursor(QTextCursor::Start);
}

/// The preview as a sheet; it holds what it shows.
class PreviewSheet : public Sheet {
public:
    PreviewSheet(QWidget& window, const Content& content, const Localization& localization)
        : Sheet(window, qt(localization.text("billing_preview_pack")), sheetWidth, sheetHeight), window_(window),
          localization_(localization),
          view_(content.markdown, content.emailBody,
                [](const std::string& text) { QGuiApplication::clipboard()->setText(qt(text)); }),
          text_(documentView()), fileName_(new Label(qt(content.fileName), TypeRole::labelPlain, &Theme::text3)) {
        addTabs();
        QMargins margins = body().contentsMargins();
        margins.setTop(0);
        body().setContentsMargins(margins);
        body().addWidget(text_);
        fileName_->setElided(true);
        fileName_->setTextInteractionFlags(Qt::TextSelectableByMouse);
        addToFootStart(fileName_);
        addToFootStart(new QWidget);  // keeps the buttons at the end where no name is shown
        addButtons();
        subscribe(view_.changed, *this, [this] { follow(); });
        showText();
    }

private:
    void addTabs() {
        const QStringList labels{qt(label(BillingPreviewTab::report, localization_)),
                                 qt(label(BillingPreviewTab::email, localization_))};
        auto* const tabs = segments(labels, qt(localization_.text("billing_preview_pack")));
        addToHead(tabs);
        tabs->setFocus();
        connect(tabs, &QTabBar::currentChanged, this, [this](int tab) {
            view_.setSelectedTab(tab == 0 ? BillingPreviewTab::report : BillingPreviewTab::email);
        });
    }

    void addButtons() {
        auto* const copy = pushButton(qt(localization_.text("ui_copy")));
        copy->setIcon(icon(QStringLiteral("copy")));
        connect(copy, &QAbstractButton::clicked, this, [this] { view_.copy(); });
        auto* const closing = pushButton(qt(localization_.text("close")), "primary");
        connect(closing, &QAbstractButton::clicked, this, [this] { close(); });
        addAction(copy);
        addAction(closing);
    }

    void follow() {
        if (view_.showingCopyConfirmation()) {
            Toast::show(window_, qt(localization_.text("billing_preview_copied_title")),
                        qt(localization_.text("billing_preview_copied_message")));
            view_.closeCopyConfirmation();  // the note goes by itself
        } else if (shown_ != view_.selectedTab()) {
            showText();
        }
    }

    void showText() {
        shown_ = view_.selectedTab();
        const bool isReport = shown_ == BillingPreviewTab::report;
        showDocument(*text_, qt(view_.shownText()), isReport ? TypeRole::fixed : TypeRole::body);
        text_->setAccessibleName(qt(label(shown_, localization_)));
        fileName_->setVisible(isReport);
    }

    QWidget& window_;
    const Localization& localization_;
    BillingPackPreviewView view_;
    BillingPreviewTab shown_ = BillingPreviewTab::report;
    QTextEdit* text_;
    Label* fileName_;
};

}  // namespace

Sheet& open(QWidget& window, const Content& content, const Localization& localization) {
    auto* const sheet = new PreviewSheet(window, content, localization);
    sheet->open();
    return *sheet;
}

}  // namespace quorvane::BillingPackPreviewSheet
