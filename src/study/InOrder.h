#pragma once

#include <algorithm>
#include <condition_variable>
#include <cstdint>
#include <exception>
#include <map>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

#include "Stopping.h"

namespace genvara {

/// Does `total` pieces of work on several threads and hands their results over in the order of the pieces,
/// whichever is done first. Threads take a few neighbouring pieces at a time, so that they seldom wait for
/// each other; no more results wait for their turn than a few such for each thread.
/// @param makeWorker makes the work of one thread: a function from a piece's number, from 0, to its result.
/// @param take takes number and result, one at a time, on any of the threads.
/// @throws StudyStopped; whatever a worker or `take` throws, of several the first that came.
template <typename MakeWorker, typename Take>
void DoInOrder(std::int64_t total, std::int32_t jobs, const StopFlag& stop, MakeWorker makeWorker,
               Take take) {
    using Result = decltype(makeWorker()(std::int64_t{}));
    using Results = std::vector<Result>;
    constexpr std::int64_t kMostAtATime = 32;
    constexpr std::int64_t kSharesPerThread = 16;  // so that all end at about the same time
    constexpr std::int64_t kWaitingPerThread = 128;
    const std::int64_t threads = std::clamp<std::int64_t>(jobs, 1, std::max<std::int64_t>(total, 1));
    const std::int64_t atATime =
        std::clamp<std::int64_t>(total / (threads * kSharesPerThread), 1, kMostAtATime);

    std::mutex mutex;
    std::condition_variable turn;
    std::map<std::int64_t, Results> waiting;  // by their first piece
    std::int64_t next = 0;                    // to be begun
    std::int64_t due = 0;                     // to be handed over
    std::exception_ptr failure;

    const auto begin = [&]() -> std::optional<std::int64_t> {
        std::unique_lock lock(mutex);
        turn.wait(lock, [&] { return failure || next >= total || next < due + threads * kWaitingPerThread; });
        if (failure || next >= total) {
            return std::nullopt;
        }
        return std::exchange(next, std::min(next + atATime, total));
    };
    const auto finish = [&](std::int64_t first, Results results) {
        const std::lock_guard lock(mutex);
        waiting.emplace(first, std::move(results));
        while (!failure && !waiting.empty() && waiting.begin()->first == due) {
            auto node = waiting.extract(waiting.begin());
            for (Result& result : node.mapped()) {
                take(due++, std::move(result));
            }
        }
        turn.notify_all();
    };
    const auto run = [&] {
        try {
            auto work = makeWorker();
            while (const auto first = begin()) {
                Results results;
                const std::int64_t end = std::min(*first + atATime, total);
                for (std::int64_t piece = *first; piece < end; ++piece) {
                    RequireGoingOn(stop);
                    results.push_back(work(piece));
                }
                finish(*first, std::move(results));
            }
        } catch (...) {
            const std::lock_guard lock(mutex);
            if (!failure) {
                failure = std::current_exception();
            }
            turn.notify_all();
        }
    };
    {
        std::vector<std::jthread> others;
        for (std::int64_t i = 1; i < threads; ++i) {
            others.emplace_back(run);
        }
        run();
    }
    if (failure) {
        std::rethrow_exception(failure);
    }
}

}  // namespace genvara
