#include "platform/window/WaitSet.h"

#include <poll.h>
#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <algorithm>

namespace veldan {

WaitSet::WaitSet()
    : m_epoll(epoll_create1(EPOLL_CLOEXEC)),
      m_timer(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK)),
      m_flag(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    Add(m_timer);
    Add(m_flag);
}

WaitSet::~WaitSet() {
    for (const int descriptor : {m_flag, m_timer, m_epoll}) {
        if (descriptor >= 0) {
            close(descriptor);
        }
    }
}

void WaitSet::Add(int descriptor) const {
    epoll_event event{};
    event.events = EPOLLIN;
    epoll_ctl(m_epoll, EPOLL_CTL_ADD, descriptor, &event);
}

void WaitSet::Remove(int descriptor) const {
    epoll_ctl(m_epoll, EPOLL_CTL_DEL, descriptor, nullptr);
}

void WaitSet::WakeAfter(std::int64_t milliseconds) {
    if (milliseconds < 0 && m_nArmed < 0) {
        return;
    }
    m_nArmed = milliseconds;
    itimerspec time{};
    if (milliseconds >= 0) {
        const std::int64_t wait = std::max<std::int64_t>(milliseconds, 0);
        time.it_value.tv_sec = wait / 1000;
        time.it_value.tv_nsec = wait % 1000 * 1'000'000 + 1;  // all zeros would disarm it
    }
    timerfd_settime(m_timer, 0, &time, nullptr);
}

void WaitSet::SetAwake(bool awake) {
    if (awake == m_bAwake) {
        return;
    }
    m_bAwake = awake;
    eventfd_t value = 1;
    if (awake) {
        eventfd_write(m_flag, value);
    } else {
        eventfd_read(m_flag, &value);
    }
}

void WaitSet::Wait() {
    pollfd descriptor{m_epoll, POLLIN, 0};
    poll(&descriptor, 1, -1);
}

}  // namespace veldan
