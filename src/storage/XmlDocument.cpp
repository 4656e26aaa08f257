#include "storage/XmlDocument.h"

#include "platform/core/File.h"
#include "storage/XmlEncoding.h"
#include "storage/XmlEngine.h"
#include "storage/XmlText.h"
#include "storage/XmlWriter.h"

#include <utility>

namespace veldan {

namespace {

constexpr std::int32_t kEngineVersion = 60;

constexpr const char* kNewDeclaration = "<?xml version=\"1.0\" ?>";

xmlNode* RootOf(const XmlTree* pTree) {
    return pTree ? xmlDocGetRootElement(pTree->pDocument.get()) : nullptr;
}

/// Whether a file that could be replaced holds just these bytes.
bool HoldsAlready(const CString& path, const CString& bytes) {
    CString held;
    return ReadFileStart(path, FileAccess::ReadIfWritable, held, std::ssize(bytes) + 1) && held == bytes;
}

}  // namespace

void XmlDocument::Reset() {
    m_engineDocument.reset();
    m_path.clear();
    m_engineVersion = 0;
    m_fault = {};
}

void XmlDocument::Initialize() {
    Reset();
    m_engineDocument = std::make_shared<XmlTree>();
    m_engineVersion = kEngineVersion;
}

bool XmlDocument::Load(CString path) {
    CString bytes;
    const bool bRead = ReadWholeFile(path, bytes, kMostXmlBytes);
    if (!bRead && !FileExists(path)) {
        return false;
    }
    Initialize();
    m_path = std::move(path);
    if (!bRead) {
        m_fault.strWhat = "the file can't be read, or is too large";
        return false;
    }
    if (std::shared_ptr<XmlTree> pTree = ReadXml(std::move(bytes), m_fault)) {
        m_engineDocument = std::move(pTree);
        return true;
    }
    return false;
}

bool XmlDocument::CreateNew(std::string_view rootName, std::string_view prefix, std::string_view namespaceUri) {
    Initialize();
    const XmlMessages messages;
    auto pTree = std::make_shared<XmlTree>();
    pTree->strDeclaration = kNewDeclaration;
    pTree->pDocument.reset(xmlNewDoc(EngineText("1.0")));
    xmlNode* const pRoot = pTree->pDocument && IsXmlName(rootName)
                               ? xmlNewDocNode(pTree->pDocument.get(), nullptr, EngineText(CString(rootName)), nullptr)
                               : nullptr;
    if (!pRoot) {
        return false;
    }
    xmlDocSetRootElement(pTree->pDocument.get(), pRoot);
    if (!prefix.empty() || !namespaceUri.empty()) {
        xmlSetNs(pRoot, FindOrDeclareXmlNs(*pRoot, prefix, namespaceUri));
        if (!pRoot->ns) {
            return false;
        }
    }
    m_engineDocument = std::move(pTree);
    return true;
}

XmlNodePtr XmlDocument::GetRootElement() const {
    xmlNode* const pRoot = RootOf(m_engineDocument.get());
    return pRoot ? XmlNodePtr(new XmlNode(m_engineDocument, pRoot)) : std::make_unique<XmlNode>();
}

bool XmlDocument::Save(const char* path, const WriteRules& rules) {
    const CString strPath = path ? CString(path) : m_path;
    if (!RootOf(m_engineDocument.get()) || m_engineDocument->bRefused) {
        return false;
    }
    const CString bytes = WriteXml(*m_engineDocument);
    // What is longer couldn't be loaded again.
    if (std::ssize(bytes) > kMostXmlBytes ||
        (!HoldsAlready(strPath, bytes) && !WriteFileWhole(strPath, bytes, rules))) {
        return false;
    }
    m_path = strPath;
    return true;
}

}  // namespace veldan
