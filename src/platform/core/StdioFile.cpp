#include "platform/core/StdioFile.h"

#include "platform/core/FileReplacement.h"
#include "platform/core/PathResolver.h"

#include <algorithm>

namespace veldan {

namespace {

/// Most files here fit in whole, so that one read serves for all their lines.
constexpr std::size_t kBufferSize = std::size_t{16} * 1024;

}  // namespace

CStdioFile::CStdioFile() = default;

CStdioFile::~CStdioFile() {
    CStdioFile::Close();
}

BOOL CStdioFile::Open(std::string_view path, UINT flags) {
    if (m_handle.IsOpen() || m_pReplacement || !IsUsablePath(path)) {
        return FALSE;
    }
    if ((flags & modeCreate) == 0) {
        return OpenExisting(path, (flags & modeReadWrite) != 0 ? FileAccess::ReadIfWritable : FileAccess::Read);
    }
    if ((flags & modeNoTruncate) != 0) {
        m_bAppending = OpenExisting(path, FileAccess::Append) != FALSE;
        return m_bAppending;
    }
    auto pReplacement = std::make_unique<FileReplacement>();
    if (!pReplacement->Begin(path, {.strRoot = m_strRoot})) {
        return FALSE;
    }
    m_pReplacement = std::move(pReplacement);
    return TRUE;
}

BOOL CStdioFile::OpenExisting(std::string_view path, FileAccess access) {
    OpenedFile file = OpenRegularFile(path, access);
    if (!file.handle.IsOpen()) {
        return FALSE;
    }
    m_handle = std::move(file.handle);
    m_nLength = file.status.st_size;
    return TRUE;
}

BOOL CStdioFile::Close() {
    bool bGood = !m_bFailed;
    if (m_pReplacement) {
        m_pReplacement->Write(m_strWritten);
        bGood = m_pReplacement->Commit();
    } else if (m_bAppending) {
        bGood = m_handle.Write(m_strWritten) && bGood;
    }
    m_pReplacement.reset();
    m_handle.Close();
    m_bAppending = m_bFailed = false;
    m_nNext = m_nFilled = 0;
    m_nPosition = m_nLength = 0;
    m_strWritten.clear();
    return bGood ? TRUE : FALSE;
}

BOOL CStdioFile::ReadString(CString& line) {
    if (Buffered().empty() && !FillBuffer()) {
        return FALSE;
    }
    line.clear();
    do {
        const std::string_view buffered = Buffered();
        const std::size_t end = buffered.find('\n');
        line.append(buffered.substr(0, end));
        if (end != std::string_view::npos) {
            Skip(end + 1);
            if (line.ends_with('\r')) {
                line.pop_back();
            }
            return TRUE;
        }
        Skip(buffered.size());
    } while (FillBuffer());
    return TRUE;
}

bool CStdioFile::FillBuffer() {
    const std::int64_t left = m_nLength - m_nPosition;
    if (!m_handle.IsOpen() || left <= 0) {
        return false;
    }
    if (!m_pBuffer) {
        m_pBuffer = std::make_unique_for_overwrite<char[]>(kBufferSize);
    }
    const auto wanted = static_cast<std::size_t>(std::min<std::int64_t>(left, kBufferSize));
    const std::optional<std::size_t> count = m_handle.ReadAt(m_nPosition, {m_pBuffer.get(), wanted});
    m_bFailed = m_bFailed || !count;
    m_nNext = 0;
    m_nFilled = count.value_or(0);
    return m_nFilled > 0;
}

void CStdioFile::Skip(std::size_t count) {
    m_nNext += count;
    m_nPosition += static_cast<std::int64_t>(count);
}

void CStdioFile::WriteString(std::string_view text) {
    for (std::size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
        Write(text.substr(0, end));
        Write("\r\n");
        text.remove_prefix(end + 1);
    }
    Write(text);
}

void CStdioFile::Write(std::string_view bytes) {
    if (m_pReplacement || m_bAppending) {
        m_strWritten += bytes;
        m_nPosition += static_cast<std::int64_t>(bytes.size());
    }
}

std::optional<std::size_t> CStdioFile::ReadHandle(std::int64_t position, std::span<char> bytes) {
    const std::optional<std::size_t> count = m_handle.IsOpen() ? m_handle.ReadAt(position, bytes) : std::nullopt;
    m_bFailed = m_bFailed || (m_handle.IsOpen() && !count);
    return count;
}

bool CStdioFile::ReadBytes(CString& bytes) {
    CString rest(static_cast<std::size_t>(std::max<std::int64_t>(m_nLength - m_nPosition, 0)), '\0');
    const std::optional<std::size_t> count = ReadHandle(m_nPosition, rest);
    if (!count) {
        return false;
    }
    rest.resize(*count);
    Seek(m_nLength);
    bytes = std::move(rest);
    return true;
}

void CStdioFile::Seek(std::int64_t position) {
    m_nPosition = std::max<std::int64_t>(position, 0);
    m_nNext = m_nFilled = 0;
}

}  // namespace veldan
