#include "storage/XmlNode.h"

#include "storage/XmlEngine.h"
#include "storage/XmlText.h"
#include "storage/XmlTree.h"
#include "storage/XmlWriter.h"

#include <utility>

#include <libxml/parser.h>

namespace veldan {

namespace {

bool IsNamed(const xmlAttr& attribute, std::string_view name) {
    if (attribute.ns && attribute.ns->prefix) {
        const std::string_view prefix = ViewOf(attribute.ns->prefix);
        if (!name.starts_with(prefix) || !name.substr(prefix.size()).starts_with(':')) {
            return false;
        }
        name.remove_prefix(prefix.size() + 1);
    }
    return ViewOf(attribute.name) == name;
}

CString ValueOf(const xmlNode& element, std::string_view name) {
    CString value;
    const xmlAttr* pAttribute = element.properties;
    while (pAttribute && !IsNamed(*pAttribute, name)) {
        pAttribute = pAttribute->next;
    }
    for (const xmlNode* pText = pAttribute ? pAttribute->children : nullptr; pText; pText = pText->next) {
        value += ViewOf(pText->content);
    }
    return value;
}

/// Appends a node as it is. The engine's own function would join neighbouring texts.
void Append(xmlNode& parent, xmlNode& child) {
    child.parent = &parent;
    child.prev = parent.last;
    (parent.last ? parent.last->next : parent.children) = &child;
    parent.last = &child;
}

bool IsElement(const xmlNode* pNode) {
    return pNode && pNode->type == XML_ELEMENT_NODE;
}

}  // namespace

XmlNode::XmlNode(XmlNodePtr pSource) {
    if (pSource) {
        *this = std::move(*pSource);
    }
}

XmlNode::XmlNode(std::shared_ptr<XmlTree> pTree, _xmlNode* pNode) : m_tree(std::move(pTree)), m_node(pNode) {}

XmlNodePtr XmlNode::GetChild(std::string_view name, bool create) const {
    for (xmlNode* pChild = IsElement(m_node) ? m_node->children : nullptr; pChild; pChild = pChild->next) {
        if (IsElement(pChild) && ViewOf(pChild->name) == name) {
            return XmlNodePtr(new XmlNode(m_tree, pChild));
        }
    }
    return create ? CreateChild(name) : std::make_unique<XmlNode>();
}

XmlNodePtr XmlNode::CreateChild(std::string_view name) const {
    const XmlMessages messages;
    xmlNode* const pChild = IsElement(m_node) && IsXmlName(name)
                                ? xmlNewDocNode(m_node->doc, nullptr, EngineText(CString(name)), nullptr)
                                : nullptr;
    if (!pChild) {
        Refuse();
        return std::make_unique<XmlNode>();
    }
    Append(*m_node, *pChild);
    // A namespace that holds for names without a prefix doesn't hold for this one.
    const xmlNs* const pDefault = xmlSearchNs(m_node->doc, m_node, nullptr);
    if (pDefault && !ViewOf(pDefault->href).empty()) {
        xmlNewNs(pChild, EngineText(""), nullptr);
    }
    return XmlNodePtr(new XmlNode(m_tree, pChild));
}

XmlNodePtr XmlNode::AppendText(std::string_view text) const {
    const XmlMessages messages;
    xmlNode* const pText =
        IsElement(m_node) && IsXmlText(text) ? xmlNewDocText(m_node->doc, EngineText(CString(text))) : nullptr;
    if (!pText) {
        Refuse();
        return std::make_unique<XmlNode>();
    }
    MarkAdded(*pText);
    Append(*m_node, *pText);
    return XmlNodePtr(new XmlNode(m_tree, pText));
}

CString XmlNode::GetAttribute(std::string_view name, const char* defaultValue) const {
    CString value = IsElement(m_node) ? ValueOf(*m_node, name) : CString();
    return value.empty() ? TextOrEmpty(defaultValue) : value;
}

int XmlNode::GetAttributeInt(std::string_view name, int defaultValue) const {
    const CString value = GetAttribute(name, nullptr);
    return value.empty() ? defaultValue : Atoi(value);
}

bool XmlNode::SetAttribute(std::string_view name, std::string_view value, std::string_view prefix,
                           std::string_view namespaceUri) const {
    const XmlMessages messages;
    const bool bDeclares = prefix.empty() && (name == "xmlns" || !namespaceUri.empty());
    if (!IsElement(m_node) || bDeclares || !IsXmlName(name) || !IsXmlText(value)) {
        return Refuse();
    }
    xmlNs* const pNs = prefix.empty() ? nullptr : FindOrDeclareXmlNs(*m_node, prefix, namespaceUri);
    const bool bNamed = prefix.empty() || pNs;
    return (bNamed && xmlSetNsProp(m_node, pNs, EngineText(CString(name)), EngineText(CString(value)))) || Refuse();
}

bool XmlNode::SetAttributeInt(std::string_view name, int value, std::string_view prefix,
                              std::string_view namespaceUri) const {
    return SetAttribute(name, Format("%d", value), prefix, namespaceUri);
}

int XmlNode::GetLine() const {
    return m_node ? static_cast<int>(xmlGetLineNo(m_node)) : 0;
}

bool XmlNode::Refuse() const {
    if (m_tree) {
        m_tree->bRefused = true;
    }
    return false;
}

}  // namespace veldan
