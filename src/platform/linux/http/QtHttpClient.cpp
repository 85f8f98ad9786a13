#include "platform/linux/http/QtHttpClient.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QObject>
#include <QSslConfiguration>
#include <QSslError>
#include <QStringList>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <fmt/format.h>
#include <utility>

namespace quorvane::platform {
namespace {

constexpr int maximumRedirects = 3;
constexpr int firstErrorOfContent = QNetworkReply::ContentAccessDenied;  // below: no answer at all

QNetworkRequest qtRequest(const HttpRequest& request, const std::string& userAgent) {
    QNetworkRequest made(QUrl(QString::fromStdString(request.url), QUrl::StrictMode));
    const bool follows = request.redirects == HttpRequest::Redirects::sameOrigin;
    made.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                      follows ? QNetworkRequest::SameOriginRedirectPolicy : QNetworkRequest::ManualRedirectPolicy);
    made.setMaximumRedirectsAllowed(maximumRedirects);
    made.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    made.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    made.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    made.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    made.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    made.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    made.setRawHeader("User-Agent", QByteArray::fromStdString(userAgent));
    // Said aloud, it also keeps Qt from unpacking what a server packs all the same.
    made.setRawHeader("Accept-Encoding", "identity");
    made.setRawHeader("Accept-Language", "*");  // Qt would tell the user's
    made.setRawHeader("Connection", "close");
    for (const HttpHeader& header : request.headers)
        made.setRawHeader(QByteArray::fromStdString(header.name), QByteArray::fromStdString(header.value));
    return made;
}

/// The system's authorities and these.
QSslConfiguration trusting(const std::string& certificates) {
    auto configuration = QSslConfiguration::defaultConfiguration();
    configuration.setCaCertificates(QSslConfiguration::systemCaCertificates() +
                                    QSslCertificate::fromData(QByteArray::fromStdString(certificates), QSsl::Pem));
    return configuration;
}

HttpFailure::Kind kindOf(QNetworkReply::NetworkError error) {
    using enum HttpFailure::Kind;
    if (error == QNetworkReply::SslHandshakeFailedError) return insecure;
    if (error == QNetworkReply::TimeoutError) return timedOut;
    const bool isRedirect = error == QNetworkReply::InsecureRedirectError ||
                            error == QNetworkReply::TooManyRedirectsError ||
                            error == QNetworkReply::ProtocolUnknownError;
    return isRedirect ? refused : unreachable;
}

/// One request with a manager of its own, which goes with it.
class QtHttpExchange final : public HttpExchange {
public:
    QtHttpExchange(const HttpRequest& request, std::function<void(const HttpResult&)> completion)
        : completion_(std::move(completion)), maximumBytes_(request.maximumBytes), timeout_(request.timeout) {}
    QtHttpExchange(const QtHttpExchange&) = delete;
    QtHttpExchange& operator=(const QtHttpExchange&) = delete;
    ~QtHttpExchange() override { close(); }

    void start(const HttpRequest& request, const std::string& userAgent, const std::string& certificates) {
        auto made = qtRequest(request, userAgent);
        if (made.url().scheme() != u"https" || made.url().host().isEmpty()) {
            QTimer::singleShot(0, &context_,
                               [this] { fail(HttpFailure::Kind::refused, "the address is no https URL"); });
            return;
        }
        if (!certificates.empty()) made.setSslConfiguration(trusting(certificates));
        manager_ = new QNetworkAccessManager;
        const auto method = QByteArray::fromStdString(request.method);
        reply_ = request.body ? manager_->sendCustomRequest(made, method, QByteArray::fromStdString(*request.body))
                              : manager_->sendCustomRequest(made, method);
        reply_->setReadBufferSize(static_cast<qint64>(maximumBytes_) + 1);
        QObject::connect(reply_, &QNetworkReply::readyRead, &context_, [this] { (void)read(); });
        QObject::connect(reply_, &QNetworkReply::sslErrors, &context_,
                         [this](const QList<QSslError>& errors) { noteSslErrors(errors); });
        QObject::connect(reply_, &QNetworkReply::finished, &context_, [this] { finish(); });
        timer_ = new QTimer(manager_);
        QObject::connect(timer_, &QTimer::timeout, &context_, [this] {
            fail(HttpFailure::Kind::timedOut, fmt::format("there was no whole answer within {} s", timeout_.count()));
        });
        timer_->setSingleShot(true);
        timer_->start(std::chrono::milliseconds{std::llround(timeout_.count() * 1000)});
    }

private:
    /// Takes what has come. False: it was too much, and the completion has been called.
    bool read() {
        const QByteArray bytes = reply_->readAll();
        if (body_.size() + static_cast<std::size_t>(bytes.size()) > maximumBytes_) {
            fail(HttpFailure::Kind::tooLarge, fmt::format("the answer is larger than {} bytes", maximumBytes_));
            return false;
        }
        body_.append(bytes.constData(), static_cast<std::size_t>(bytes.size()));
        return true;
    }

    void noteSslErrors(const QList<QSslError>& errors) {
        QStringList texts;
        for (const QSslError& error : errors)
            texts.append(error.errorString());
        sslProblem_ = texts.join(u"; ").toStdString();
    }

    void finish() {
        const auto error = reply_->error();
        const int status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        if (error != QNetworkReply::NoError && (status < 400 || error < firstErrorOfContent)) {
            fail(kindOf(error), sslProblem_.empty() ? reply_->errorString().simplified().toStdString() : sslProblem_);
            return;
        }
        if (!read()) return;
        HttpResponse response{.status = status, .body = std::move(body_)};
        for (const auto& [name, value] : reply_->rawHeaderPairs())
            response.headers.push_back({name.toStdString(), value.toStdString()});
        complete(response);
    }

    void fail(HttpFailure::Kind kind, const std::string& cause) { complete(HttpFailure{.kind = kind, .cause = cause}); }

    /// The last thing that it does: the completion may destroy it.
    void complete(const HttpResult& result) {
        close();
        const auto completion = std::exchange(completion_, nullptr);
        if (completion) completion(result);
    }

    /// Ends connection and time limit. The manager may be in the middle of telling us something, so the loop deletes
    /// it.
    void close() {
        auto* const manager = std::exchange(manager_, nullptr);
        if (!manager) return;
        QObject::disconnect(reply_, nullptr, &context_, nullptr);
        reply_->abort();
        timer_->stop();
        manager->deleteLater();
    }

    std::function<void(const HttpResult&)> completion_;
    std::size_t maximumBytes_;
    Seconds timeout_;
    QNetworkAccessManager* manager_ = nullptr;  ///< owns reply and timer; null before the start and after the end
    QNetworkReply* reply_ = nullptr;
    QTimer* timer_ = nullptr;
    std::string body_;
    std::string sslProblem_;
    QObject context_;  ///< dies first, so that no signal meets half an exchange
};

}  // namespace

QtHttpClient::QtHttpClient(std::string userAgent, std::string certificates)
    : userAgent_(std::move(userAgent)), certificates_(std::move(certificates)) {}

std::unique_ptr<HttpExchange> QtHttpClient::send(const HttpRequest& request,
                                                 std::function<void(const HttpResult&)> completion) {
    auto exchange = std::make_unique<QtHttpExchange>(request, std::move(completion));
    exchange->start(request, userAgent_, certificates_);
    return exchange;
}

}  // namespace quorvane::platform
