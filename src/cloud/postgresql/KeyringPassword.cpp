#include "cloud/postgresql/KeyringPassword.h"

#include <glib-unix.h>
#include <libsecret/secret.h>
#include <utility>

namespace quorvane::postgresql {

namespace {

/// What asking a keyring that is there takes at most. One that starts needs a second.
constexpr Seconds keyringPatience = 5s;

template <auto release>
struct Releaser {
    template <class T>
    void operator()(T* object) const {
        release(object);
    }
};
template <class T>
using Object = std::unique_ptr<T, Releaser<g_object_unref>>;

/// One question. The callbacks may come after nobody waits any more, so each of them owns a share of it.
struct Question {
    std::unique_ptr<GHashTable, Releaser<g_hash_table_unref>> attributes;
    Object<GCancellable> cancellable{g_cancellable_new()};
    bool isAnswered = false;
    KeyringAnswer answer;
};
using Share = std::shared_ptr<Question>;

const SecretSchema& schema() {
    static const SecretSchema value{"org.quorvane.Database",
                                    SECRET_SCHEMA_DONT_MATCH_NAME,  // `secret-tool store` names none
                                    {{"application", SECRET_SCHEMA_ATTRIBUTE_STRING},
                                     {"service", SECRET_SCHEMA_ATTRIBUTE_STRING},
                                     {"user", SECRET_SCHEMA_ATTRIBUTE_STRING}},
                                    0,
                                    nullptr,
                                    nullptr,
                                    nullptr,
                                    nullptr,
                                    nullptr,
                                    nullptr,
                                    nullptr};
    return value;
}

void take(SecretItem* item, KeyringAnswer& answer) {
    if (answer.password) return;
    if (secret_item_get_locked(item)) {
        answer.isLocked = true;
        return;
    }
    SecretValue* value = secret_item_get_secret(item);
    if (!value) return;
    if (const char* text = secret_value_get_text(value)) answer.password = text;
    secret_value_unref(value);
}

void found(GObject* service, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Share> question(static_cast<Share*>(data));
    GList* items = secret_service_search_finish(reinterpret_cast<SecretService*>(service), result, nullptr);
    for (const GList* item = items; item; item = item->next)
        take(static_cast<SecretItem*>(item->data), (*question)->answer);
    g_list_free_full(items, g_object_unref);
    (*question)->isAnswered = true;
}

void connected(GObject*, GAsyncResult* result, gpointer data) {
    std::unique_ptr<Share> question(static_cast<Share*>(data));
    const Object<SecretService> service(secret_service_get_finish(result, nullptr));
    if (!service) {  // no bus, no keyring: the same as no password
        (*question)->isAnswered = true;
        return;
    }
    // Otherwise GLib ends this process when the bus goes.
    g_dbus_connection_set_exit_on_close(g_dbus_proxy_get_connection(G_DBUS_PROXY(service.get())), FALSE);
    const Question& asked = **question;
    secret_service_search(service.get(), &schema(), asked.attributes.get(), SECRET_SEARCH_LOAD_SECRETS,
                          asked.cancellable.get(), found, question.release());
}

gboolean setFlag(gpointer flag) {
    *static_cast<bool*>(flag) = true;
    return G_SOURCE_REMOVE;
}

gboolean setFlagOnEvent(gint, GIOCondition, gpointer flag) {
    return setFlag(flag);
}

/// A main context of this thread's own, since the answers of the keyring arrive through one.
class Context {
public:
    Context() : context_(g_main_context_new()) { g_main_context_push_thread_default(context_); }
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;
    ~Context() {
        g_main_context_pop_thread_default(context_);
        g_main_context_unref(context_);
    }

    void iterate() { g_main_context_iteration(context_, TRUE); }

    /// `*flag` becomes true after the time.
    GSource* flagAfter(Seconds time, bool* flag) {
        GSource* source = g_timeout_source_new(static_cast<guint>(time / 1ms));
        g_source_set_callback(source, setFlag, flag, nullptr);
        g_source_attach(source, context_);
        return source;
    }

    /// `*flag` becomes true when the descriptor is readable.
    GSource* flagOnEvent(int descriptor, bool* flag) {
        GSource* source = g_unix_fd_source_new(descriptor, G_IO_IN);
        // The type of a source's callback depends on the source; GLib casts it back.
        g_source_set_callback(source, reinterpret_cast<GSourceFunc>(reinterpret_cast<void (*)()>(setFlagOnEvent)), flag,
                              nullptr);
        g_source_attach(source, context_);
        return source;
    }

private:
    GMainContext* context_;
};

void drop(GSource* source) {
    g_source_destroy(source);
    g_source_unref(source);
}

}  // namespace

KeyringAnswer keyringPassword(const std::string& service, const std::string& user, Seconds patience,
                              const CancelToken& cancelToken) {
    Context context;
    const auto question = std::make_shared<Question>();
    question->attributes.reset(secret_attributes_build(&schema(), "application", "quorvane", "service", service.c_str(),
                                                       "user", user.c_str(), nullptr));
    secret_service_get(SECRET_SERVICE_OPEN_SESSION, question->cancellable.get(), connected, new Share(question));

    bool isOver = false;
    GSource* deadline = context.flagAfter(patience, &isOver);
    GSource* cancelled = context.flagOnEvent(cancelToken.descriptor(), &isOver);
    while (!question->isAnswered && !isOver)
        context.iterate();
    drop(deadline);
    drop(cancelled);
    if (!question->isAnswered) {
        // The answer to the cancellation normally comes at once; then nothing is left behind.
        g_cancellable_cancel(question->cancellable.get());
        isOver = false;
        GSource* farewell = context.flagAfter(0.1s, &isOver);
        while (!question->isAnswered && !isOver)
            context.iterate();
        drop(farewell);
        question->answer = {};
    }
    secret_service_disconnect();  // it would go on to belong to this context, which nobody serves any more
    return question->answer;
}

std::unique_ptr<PostgresConnection> connectWithKeyring(ConnectionSettings& settings, const CancelToken& cancelToken) {
    try {
        return std::make_unique<PostgresConnection>(settings, cancelToken);
    } catch (const PostgresError& error) {
        if (!error.facts().needsPassword || error.facts().user.empty() || settings.overrides.contains("password"))
            throw;
        const KeyringAnswer answer =
            keyringPassword(settings.service, error.facts().user, keyringPatience, cancelToken);
        if (!answer.password) {
            PostgresError::Facts facts = error.facts();
            facts.isKeyringLocked = answer.isLocked;
            throw PostgresError(std::move(facts));
        }
        settings.overrides["password"] = *answer.password;
    }
    return std::make_unique<PostgresConnection>(settings, cancelToken);
}

}  // namespace quorvane::postgresql
