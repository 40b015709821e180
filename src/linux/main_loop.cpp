#include "linux/main_loop.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QSocketNotifier>
#include <QTimer>
#include <utility>

namespace plenzo {

namespace {

/// Owns a Qt object that calls back. The object may be in the middle of its signal when the handle
/// goes, so it is silenced now and deleted by the loop.
template <typename QtObject>
class QtRegistration final : public Registration {
public:
    explicit QtRegistration(QtObject* object) : m_object(object) {}
    QtRegistration(const QtRegistration&) = delete;
    QtRegistration& operator=(const QtRegistration&) = delete;
    ~QtRegistration() override {
        m_object->disconnect();
        silence(*m_object);
        m_object->deleteLater();
    }

private:
    static void silence(QSocketNotifier& notifier) { notifier.setEnabled(false); }
    static void silence(QTimer& timer) { timer.stop(); }

    QtObject* m_object;
};

/// The callback is copied before the call, because it may destroy what holds it.
auto callingACopy(std::function<void()> callback) {
    return [callback = std::move(callback)] {
        const auto copy = callback;
        copy();
    };
}

} // namespace

int MainLoop::run() {
    return QCoreApplication::exec();
}

void MainLoop::quit(int exitCode) {
    post([exitCode] { QCoreApplication::exit(exitCode); });
}

void MainLoop::post(std::function<void()> task) {
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(task), Qt::QueuedConnection);
}

Handle MainLoop::watch(int descriptor, Readiness readiness, std::function<void()> ready) {
    const auto type =
        readiness == Readiness::Readable ? QSocketNotifier::Read : QSocketNotifier::Write;
    auto* notifier = new QSocketNotifier(descriptor, type);
    QObject::connect(notifier, &QSocketNotifier::activated, callingACopy(std::move(ready)));
    return std::make_unique<QtRegistration<QSocketNotifier>>(notifier);
}

Handle MainLoop::after(int milliseconds, std::function<void()> elapsed) {
    auto* timer = new QTimer;
    timer->setSingleShot(true);
    QObject::connect(timer, &QTimer::timeout, callingACopy(std::move(elapsed)));
    timer->start(milliseconds);
    return std::make_unique<QtRegistration<QTimer>>(timer);
}

} // namespace plenzo
