#include "linux/glib_thread.h"

#include <glib.h>

#include <memory>
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

GLibThread::GLibThread()
    : m_context(g_main_context_new()), m_loop(g_main_loop_new(m_context, FALSE)),
      m_thread([this] { run(); }) {}

GLibThread::~GLibThread() {
    post([this] { g_main_loop_quit(m_loop); });
    m_thread.join();
    g_main_loop_unref(m_loop);
    g_main_context_unref(m_context);
}

void GLibThread::post(std::function<void()> task) {
    GSource* source = g_idle_source_new();
    g_source_set_callback(source, runTask, std::make_unique<Task>(std::move(task)).release(),
                          deleteTask);
    g_source_attach(source, m_context);
    g_source_unref(source);
}

void GLibThread::run() {
    g_main_context_push_thread_default(m_context);
    g_main_loop_run(m_loop);
    g_main_context_pop_thread_default(m_context);
}

} // namespace plenzo
