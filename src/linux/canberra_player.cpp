#include "linux/canberra_player.h"

#include <canberra.h>
#include <dlfcn.h>
#include <link.h>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace plenzo {

namespace {

constexpr std::chrono::seconds longestWaitForEnd{1};
constexpr std::uint32_t soundNumber = 1;

struct DestroyContext {
    void operator()(ca_context* context) const { ca_context_destroy(context); }
};
using Context = std::unique_ptr<ca_context, DestroyContext>;

extern "C" {
using AlsaErrorHandler = void (*)(const char* file, int line, const char* function, int error,
                                  const char* format, ...);

static void ignoreAlsaError(const char* /*file*/, int /*line*/, const char* /*function*/,
                            int /*error*/, const char* /*format*/, ...) {}
}

/// A machine without a sound card would be told of on the standard error output, sound after sound.
/// Only where ALSA has been loaded to play them.
void silenceAlsa() {
    void* library = ::dlopen("libasound.so.2", RTLD_LAZY | RTLD_NOLOAD);
    if (library == nullptr) {
        return;
    }
    using SetHandler = int (*)(AlsaErrorHandler handler);
    const auto setHandler =
        reinterpret_cast<SetHandler>(::dlsym(library, "snd_lib_error_set_handler"));
    if (setHandler != nullptr) {
        setHandler(ignoreAlsaError);
    }
    ::dlclose(library);
}

int noteDriver(dl_phdr_info* library, std::size_t /*size*/, void* drivers) {
    const std::string path = library->dlpi_name;
    if (path.find("/libcanberra-") != std::string::npos) {
        static_cast<std::vector<std::string>*>(drivers)->push_back(path);
    }
    return 0;
}

/// A driver's thread says that it is done before it has returned from the driver's code, which the
/// context would unload under it.
void keepDriversLoaded() {
    std::vector<std::string> drivers;
    ::dl_iterate_phdr(noteDriver, &drivers);
    for (const std::string& path : drivers) {
        if (void* driver = ::dlopen(path.c_str(), RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE)) {
            ::dlclose(driver);
        }
    }
}

/// Null when there is no audio.
Context newContext() {
    ca_context* created = nullptr;
    if (ca_context_create(&created) != CA_SUCCESS) {
        return nullptr;
    }
    Context context(created);
    ca_context_change_props(created, CA_PROP_APPLICATION_NAME, "Plenzo Alarm",
                            CA_PROP_APPLICATION_ID, "org.plenzo.PlenzoAlarm", nullptr);
    if (ca_context_open(created) != CA_SUCCESS) {
        return nullptr;
    }
    silenceAlsa();
    keepDriversLoaded();
    return context;
}

bool startSound(ca_context* context, const std::string& path) {
    return ca_context_play(context, soundNumber, CA_PROP_MEDIA_FILENAME, path.c_str(),
                           CA_PROP_EVENT_DESCRIPTION, "Alarm", CA_PROP_MEDIA_ROLE, "alarm",
                           CA_PROP_CANBERRA_CACHE_CONTROL, "never", nullptr) == CA_SUCCESS;
}

/// A context may have outlived its audio server, so a sound that fails gets a new one.
void playSound(Context& context, const std::string& path) {
    if (context && startSound(context.get(), path)) {
        return;
    }
    context.reset();
    context = newContext();
    if (context && !startSound(context.get(), path)) {
        context.reset();
    }
}

} // namespace

/// What the thread and the player share.
class CanberraPlayer::Worker {
public:
    void run() {
        Context context;
        while (const auto path = next()) {
            playSound(context, *path);
        }
        context.reset();
        const std::lock_guard lock(m_mutex);
        m_hasEnded = true;
        m_changed.notify_all();
    }

    void play(const std::string& path) {
        const std::lock_guard lock(m_mutex);
        m_waiting = path;
        m_changed.notify_all();
    }

    void end() {
        std::unique_lock lock(m_mutex);
        m_isToEnd = true;
        m_changed.notify_all();
        m_changed.wait_for(lock, longestWaitForEnd, [this] { return m_hasEnded; });
    }

private:
    /// Nothing at the end.
    std::optional<std::string> next() {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_isToEnd || m_waiting; });
        return m_isToEnd ? std::nullopt : std::exchange(m_waiting, std::nullopt);
    }

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::optional<std::string> m_waiting;
    bool m_isToEnd = false;
    bool m_hasEnded = false;
};

CanberraPlayer::~CanberraPlayer() {
    if (m_worker) {
        m_worker->end();
    }
}

void CanberraPlayer::play(const std::string& path) {
    if (!m_worker) {
        auto worker = std::make_shared<Worker>();
        try {
            std::thread([worker] { worker->run(); }).detach();
        } catch (const std::system_error&) {
            return; // No thread, no sound.
        }
        m_worker = std::move(worker);
    }
    m_worker->play(path);
}

} // namespace plenzo
