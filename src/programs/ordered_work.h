// Independent pieces of work on several threads, their results in order.
#pragma once

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace vesk {

/// Makes the results 0 to count - 1 ahead of whoever takes them. No more than four a job are made and not
/// taken, so that memory does not grow with count.
template <class T>
class OrderedWork {
 public:
  /// jobs: threads, 1 or more; with one, Next() does the work itself.
  /// make: called once for each number, from several threads at a time; throws nothing.
  OrderedWork(std::size_t count, int jobs, std::function<T(std::size_t)> make)
      : count_(count), make_(std::move(make)), made_(std::size_t{4} * static_cast<std::size_t>(jobs)) {
    const std::size_t wanted = jobs > 1 ? std::min(count, static_cast<std::size_t>(jobs)) : 0;
    try {
      while (workers_.size() < wanted) workers_.emplace_back([this] { Work(); });
    } catch (const std::system_error&) {  // the system has no more threads to give: those that run do it all
    }
  }
  OrderedWork(const OrderedWork&) = delete;
  OrderedWork& operator=(const OrderedWork&) = delete;

  /// Results that nobody took are given up; work under way is waited for.
  ~OrderedWork() {
    {
      const std::lock_guard lock(mutex_);
      count_ = 0;
    }
    room_.notify_all();
  }

  /// The next result, 0 first; at most count calls.
  T Next() {
    if (workers_.empty()) return make_(taken_++);
    std::unique_lock lock(mutex_);
    std::optional<T>& place = made_[taken_ % made_.size()];
    ready_.wait(lock, [&place] { return place.has_value(); });
    T result = std::move(*place);
    place.reset();
    ++taken_;
    lock.unlock();
    room_.notify_all();
    return result;
  }

 private:
  void Work() {
    std::unique_lock lock(mutex_);
    for (;;) {
      room_.wait(lock, [this] { return begun_ >= count_ || begun_ < taken_ + made_.size(); });
      if (begun_ >= count_) return;
      const std::size_t number = begun_++;
      lock.unlock();
      T result = make_(number);
      lock.lock();
      made_[number % made_.size()] = std::move(result);
      ready_.notify_one();
    }
  }

  std::size_t count_;  ///< 0 once nobody takes any more
  std::function<T(std::size_t)> make_;
  std::mutex mutex_;
  std::condition_variable ready_, room_;
  std::vector<std::optional<T>> made_;  ///< result n at place n modulo the number of places
  std::size_t begun_ = 0;
  std::size_t taken_ = 0;
  std::vector<std::jthread> workers_;  ///< last: they end before what they use does
};

}  // namespace vesk
