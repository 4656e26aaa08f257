#pragma once

#include "platform/core/Export.h"
#include "platform/core/FileHandle.h"
#include "platform/core/Text.h"

#include <memory>

namespace veldan {

class FileReplacement;

/// A stream of text lines over a regular file. On the disk lines end in CR LF, in the program in a line feed; the
/// stream translates. Positions are byte offsets on the disk. Errors while writing show in the result of `Close`.
class VELDAN_PLATFORM_API CStdioFile {
public:
    enum OpenFlags : UINT {
        modeRead = 0x01,
        /// With `modeCreate`, for writing: a new content in place of the old one, which stays until `Close`.
        modeWrite = 0x02,
        /// For reading a file that could be written as well; a file without any write bit fails to open. With
        /// `modeCreate` and `modeNoTruncate`, for appending.
        modeReadWrite = 0x04,
        modeCreate = 0x08,
        /// Keeps what a file holds: everything written is added at its end, in one piece that no other process's
        /// appending splits.
        modeNoTruncate = 0x10,
        /// Others may read and write meanwhile, as they always may here.
        shareDenyNone = 0x20,
    };

    CStdioFile();
    virtual ~CStdioFile();
    CStdioFile(const CStdioFile&) = delete;
    CStdioFile& operator=(const CStdioFile&) = delete;

    /// Opens a path of any spelling (`File.h`) with a combination of flags as described there. False if that fails,
    /// also on a stream that is open.
    [[nodiscard]] virtual BOOL Open(std::string_view path, UINT flags);

    /// Names the root (`WriteRules`) of the paths that are opened for a new content from now on.
    void SetRoot(const CString& root) { m_strRoot = root; }

    /// Brings to the disk what was written. False if that, or any read since the opening, failed; a stream that
    /// replaces a file then leaves the old one as it was. True on a closed stream.
    virtual BOOL Close();

    /// The next line without its line end. False at the end of the file; `line` is then unchanged.
    [[nodiscard]] virtual BOOL ReadString(CString& line);

    /// Writes text, its line feeds as CR LF. The caller supplies the line feed that ends a line.
    virtual void WriteString(std::string_view text);

    /// Writes bytes as they are.
    void Write(std::string_view bytes);

    /// Reads bytes straight from the file, past the stream's buffer and without moving its position. Returns how many,
    /// or nothing on an error.
    [[nodiscard]] std::optional<std::size_t> ReadHandle(std::int64_t position, std::span<char> bytes);

    /// Reads all bytes from the position to the end, as they are. False on an error; `bytes` is then unchanged.
    [[nodiscard]] bool ReadBytes(CString& bytes);

    /// Moves the place where reading goes on.
    void Seek(std::int64_t position);
    void SeekToEnd() { Seek(m_nLength); }
    [[nodiscard]] std::int64_t GetPosition() const { return m_nPosition; }

    /// The file's length in bytes when it was opened.
    [[nodiscard]] std::int64_t GetLength() const { return m_nLength; }

private:
    [[nodiscard]] BOOL OpenExisting(std::string_view path, FileAccess access);
    [[nodiscard]] bool FillBuffer();
    [[nodiscard]] std::string_view Buffered() const { return {m_pBuffer.get() + m_nNext, m_nFilled - m_nNext}; }
    void Skip(std::size_t count);

    CString m_strRoot;
    FileHandle m_handle;
    std::unique_ptr<FileReplacement> m_pReplacement;
    bool m_bAppending = false;
    bool m_bFailed = false;

    /// What was read ahead, from the position on, lies between `m_nNext` and `m_nFilled`.
    std::unique_ptr<char[]> m_pBuffer;
    std::size_t m_nNext = 0;
    std::size_t m_nFilled = 0;
    std::int64_t m_nPosition = 0;
    std::int64_t m_nLength = 0;

    /// What was written but hasn't reached the system.
    CString m_strWritten;
};

}  // namespace veldan
