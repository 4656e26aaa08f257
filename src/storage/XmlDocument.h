#pragma once

#include "platform/core/File.h"
#include "storage/XmlNode.h"
#include "storage/XmlReader.h"

#include <cstdint>

namespace veldan {

/// An XML file as a tree. Made for one job, on one thread: `Load` or `CreateNew`, then work on the nodes, then `Save`.
/// Failures are plain results; nothing is printed, and nothing but the file itself is ever read.
class XmlDocument {
public:
    XmlDocument() = default;
    XmlDocument(const XmlDocument&) = delete;
    XmlDocument& operator=(const XmlDocument&) = delete;

    /// Back to the state of a new object. Node handles keep what they stand for.
    void Reset();

    /// Reads a regular file of at most 16 MiB. A missing one leaves everything as it is. After any other failure the
    /// document is empty but for its path.
    [[nodiscard]] bool Load(CString path);

    /// Starts anew with an empty root. `prefix` and `namespaceUri` may be empty; a prefix needs a namespace.
    [[nodiscard]] bool CreateNew(std::string_view rootName, std::string_view prefix, std::string_view namespaceUri);

    [[nodiscard]] XmlNodePtr GetRootElement() const;

    /// Writes the file, whole or not at all, and remembers its path; null writes to the path known so far. A file that
    /// has these bytes already isn't touched. False leaves file and path as they were: the file can't be replaced,
    /// there is no root, or a node refused something.
    bool Save(const char* path, const WriteRules& rules = {});

    /// The file that the document was loaded from, or saved to last.
    [[nodiscard]] const CString& GetPath() const { return m_path; }

    /// The generation of the engine, 0 while there is no tree.
    [[nodiscard]] std::int32_t GetEngineVersion() const { return m_engineVersion; }

    /// Why `Load` refused the file's content.
    [[nodiscard]] const XmlFault& GetFault() const { return m_fault; }

private:
    void Initialize();

    std::shared_ptr<XmlTree> m_engineDocument;
    CString m_path;
    std::int32_t m_engineVersion = 0;
    XmlFault m_fault;
};

}  // namespace veldan
