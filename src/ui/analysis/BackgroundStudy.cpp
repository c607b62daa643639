#include "BackgroundStudy.h"

#include <exception>
#include <utility>

#include "LastChance.h"

namespace genvara {
namespace {

constexpr int kProgressInterval = 100;  // milliseconds

}  // namespace

void StudyTurn::Done(std::int64_t done, std::int64_t total) {
    m_done = done;
    m_total = total;
    if (m_watch) {
        m_watch();
    }
}

BackgroundStudy::BackgroundStudy(QObject* parent) : QObject(parent) {
    m_clock.setInterval(kProgressInterval);
    connect(&m_clock, &QTimer::timeout, this, [this] {
        if (m_turn) {
            emit Progressed(m_turn->DoneSoFar(), m_turn->Total());
        }
    });
}

BackgroundStudy::~BackgroundStudy() {
    if (m_turn) {
        m_turn->Ask();
    }
    {
        const std::lock_guard lock(m_mutex);
        m_isOver = true;
        m_next = {};
    }
    m_wake.notify_one();
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

void BackgroundStudy::Begin(Work work) {
    const bool wasWorking = IsWorking();
    if (m_turn) {
        m_turn->Ask();
    }
    m_turn = std::make_shared<StudyTurn>(m_watch);
    {
        const std::lock_guard lock(m_mutex);
        m_next = {m_turn, std::move(work)};
    }
    if (!m_thread.joinable()) {
        m_thread = std::thread([this] { Loop(); });
    }
    m_wake.notify_one();
    m_clock.start();
    if (!wasWorking) {
        emit WorkingChanged(true);
    }
}

void BackgroundStudy::Stop() {
    if (!m_turn) {
        return;
    }
    m_turn->Ask();
    m_turn.reset();
    {
        const std::lock_guard lock(m_mutex);
        m_next = {};
    }
    m_clock.stop();
    emit WorkingChanged(false);
}

void BackgroundStudy::Loop() {
    while (true) {
        Job job;
        {
            std::unique_lock lock(m_mutex);
            m_wake.wait(lock, [this] { return m_isOver || m_next.turn; });
            if (m_isOver) {
                return;
            }
            job = std::exchange(m_next, {});
        }
        Answer answer;
        try {
            answer = job.work(*job.turn);
        } catch (const StudyStopped&) {
            continue;
        } catch (...) {
            answer = [failure = std::current_exception()] { std::rethrow_exception(failure); };
        }
        QMetaObject::invokeMethod(
            this, [this, turn = std::move(job.turn), answer = std::move(answer)] { Answered(turn, answer); },
            Qt::QueuedConnection);
    }
}

void BackgroundStudy::Answered(const std::shared_ptr<StudyTurn>& turn, const Answer& answer) {
    if (turn != m_turn) {
        return;
    }
    m_turn.reset();
    m_clock.stop();
    emit WorkingChanged(false);
    RunEvent(answer);
}

}  // namespace genvara
