#include "linux/glib_thread.h"

#include <glib.h>

#include <utility>

namespace plenzo {

namespace {

using Task = std::function<void()>;

gboolean runTask(gpointer task) {
    (*static_cast<Task*>(task))();
    return G_SOURCE_REMOVE;
}

void deleteTask(gpointer task) {
    const std::unique_ptr<Task> owned(static_cast<Task*>(task));
}

} // namespace

struct GLibThread::Loop {
    Loop() = default;
    Loop(const Loop&) = delete;
    Loop& operator=(const Loop&) = delete;
    ~Loop() {
        g_main_loop_unref(loop);
        g_main_context_unref(context);
    }

    void run() const {
        g_main_context_push_thread_default(context);
        g_main_loop_run(loop);
        g_main_context_pop_thread_default(context);
    }

    GMainContext* const context = g_main_context_new();
    GMainLoop* const loop = g_main_loop_new(context, FALSE);
};

GLibThread::GLibThread()
    : m_loop(std::make_unique<Loop>()), m_thread([loop = m_loop.get()] { loop->run(); }) {}

GLibThread::~GLibThread() {
    post([this] { g_main_loop_quit(m_loop->loop); });
    m_thread.join();
}

void GLibThread::post(std::function<void()> task) {
    GSource* source = g_idle_source_new();
    g_source_set_callback(source, runTask, std::make_unique<Task>(std::move(task)).release(),
                          deleteTask);
    g_source_attach(source, m_loop->context);
    g_source_unref(source);
}

} // namespace plenzo
