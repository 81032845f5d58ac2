// Linked into the tests of the thread sanitizer, which cannot look into Qt: tells it that what is
// given to a pool has been finished before the pool's thread gets it.

#include <dlfcn.h>
#include <functional>
#include <QRunnable>
#include <QThreadPool>
#include <sanitizer/tsan_interface.h>

namespace {

/// The function of Qt that the one of the same name here stands before.
template <typename Function> Function original(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

/// Work that has been given away. Only what it does itself is watched, not how it is kept.
class HandedOver final : public QRunnable {
public:
    explicit HandedOver(QRunnable *work)
        : m_work(work)
    {
        __tsan_release(m_work);
    }

    __attribute__((no_sanitize("thread"))) void run() override
    {
        __tsan_acquire(m_work);
        const bool isDeletedAfterwards = m_work->autoDelete();
        m_work->run();
        if (isDeletedAfterwards) {
            delete m_work;
        }
    }

private:
    QRunnable *m_work;
};

class Call final : public QRunnable {
public:
    explicit Call(std::function<void()> function)
        : m_function(std::move(function))
    {
    }
    void run() override { m_function(); }

private:
    std::function<void()> m_function;
};

} // namespace

void QThreadPool::start(QRunnable *work, int priority)
{
    static const auto inQt =
        original<void (*)(QThreadPool *, QRunnable *, int)>("_ZN11QThreadPool5startEP9QRunnablei");
    inQt(this, new HandedOver(work), priority);
}

void QThreadPool::start(std::function<void()> function, int priority)
{
    start(new Call(std::move(function)), priority);
}
