#include "platform/core/FolderLock.h"

#include "platform/core/FileTarget.h"

#include <cerrno>
#include <chrono>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>

namespace veldan {

namespace {

using namespace std::chrono_literals;

constexpr auto kLongestWait = 1000ms;
constexpr auto kPause = 2ms;

thread_local FolderLock* t_pInnermost = nullptr;

bool LockWithin(int file, std::chrono::steady_clock::duration wait) {
    const auto deadline = std::chrono::steady_clock::now() + wait;
    while (flock(file, LOCK_EX | LOCK_NB) != 0) {
        if ((errno != EWOULDBLOCK && errno != EINTR) || std::chrono::steady_clock::now() >= deadline) {
            return false;
        }
        std::this_thread::sleep_for(kPause);
    }
    return true;
}

}  // namespace

FolderLock::FolderLock(std::string_view folder, const WriteRules& rules) : m_pOuter(t_pInnermost) {
    t_pInnermost = this;
    const FileHandle found = OpenTargetFolder(folder, rules);
    if (!found.IsOpen() || fstat(found.Get(), &m_status) != 0) {
        return;
    }
    m_bHeld = IsHeldOutside();
    if (m_bHeld) {
        return;
    }
    m_handle = FileHandle::OpenIn(found.Get(), ".", O_RDONLY | O_DIRECTORY);
    m_bHeld = m_handle.IsOpen() && LockWithin(m_handle.Get(), kLongestWait);
}

FolderLock::~FolderLock() {
    t_pInnermost = m_pOuter;
}

bool FolderLock::IsHeldOutside() const {
    for (const FolderLock* pLock = m_pOuter; pLock; pLock = pLock->m_pOuter) {
        if (pLock->m_bHeld && IsSameFile(pLock->m_status, m_status)) {
            return true;
        }
    }
    return false;
}

}  // namespace veldan
