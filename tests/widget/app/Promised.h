#pragma once

#include <memory>
#include <QCoreApplication>
#include <QFuture>
#include <QPromise>
#include <vector>

/// Stands in for what is fetched: remembers each question, and answers when the test says so.
template <typename Outcome> class Promised final {
public:
    [[nodiscard]] QFuture<Outcome> ask()
    {
        m_open.push_back(std::make_unique<QPromise<Outcome>>());
        m_open.back()->start();
        return m_open.back()->future();
    }

    [[nodiscard]] std::size_t asked() const { return m_open.size(); }

    /// Answers the newest question.
    void answer(const Outcome &outcome)
    {
        m_open.back()->addResult(outcome);
        m_open.back()->finish();
        QCoreApplication::processEvents();
    }

    /// Lets the newest question end without an answer.
    void lose()
    {
        m_open.back().reset();
        QCoreApplication::processEvents();
    }

private:
    std::vector<std::unique_ptr<QPromise<Outcome>>> m_open;
};
