#include "platform/core/Path.h"

#include <algorithm>
#include <climits>

#include <unistd.h>

namespace veldan {

CString ToSystemPath(std::string_view path) {
    CString result(path);
    std::replace(result.begin(), result.end(), '\\', '/');
    return result;
}

CString ToHostPath(std::string_view path) {
    CString result(path);
    std::replace(result.begin(), result.end(), '/', '\\');
    return result;
}

CString ExecutablePath() {
    CString path(PATH_MAX, '\0');
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    path.resize(static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    return ToHostPath(path);
}

bool IsPlainFileName(std::string_view name) {
    const auto isNever = [](char c) { return c == '/' || c == '\\' || c == '\0'; };
    return !name.empty() && name != "." && name != ".." && std::ranges::none_of(name, isNever);
}

}  // namespace veldan
