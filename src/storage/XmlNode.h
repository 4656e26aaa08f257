#pragma once

#include "platform/core/Text.h"

#include <memory>

struct _xmlNode;

namespace veldan {

class XmlNode;
struct XmlTree;

/// How operations give a new handle. There always is one; where an operation fails it is an empty handle.
using XmlNodePtr = std::unique_ptr<XmlNode>;

/// A handle on one node of a document's tree, empty or good. Handles share the tree with the document and may outlive
/// it. Every operation of an empty handle is safe and answers as for a node that isn't there, so that a chain of calls
/// needs no look in between. Handles and their document belong to one thread at a time.
///
/// What is written is checked first: UTF-8 of characters that XML allows, and good names. A document that something
/// was refused for can't be saved any more.
class XmlNode {
public:
    XmlNode() = default;
    /// Takes the handle over.
    XmlNode(XmlNodePtr pSource);

    [[nodiscard]] bool IsEmpty() const { return m_node == nullptr; }

    /// The first child element of that local name, whatever its prefix. A missing one is appended with `create`,
    /// without a namespace, and is an empty handle otherwise.
    [[nodiscard]] XmlNodePtr GetChild(std::string_view name, bool create) const;

    /// Appends a text node, one of its own also beside another text. Empty for a node that is no element.
    XmlNodePtr AppendText(std::string_view text) const;

    /// The value of the attribute with that name, prefix included. A missing attribute and an empty one give the
    /// default, which stands for the empty text where it is null.
    [[nodiscard]] CString GetAttribute(std::string_view name, const char* defaultValue) const;

    /// The number that the attribute's value begins with, 0 where it begins with none.
    [[nodiscard]] int GetAttributeInt(std::string_view name, int defaultValue) const;

    /// Sets an attribute; one of that name keeps its place among the others. `prefix` and `namespaceUri` go together
    /// and may both be empty. False for a node that is no element and for what XML can't hold.
    bool SetAttribute(std::string_view name, std::string_view value, std::string_view prefix,
                      std::string_view namespaceUri) const;
    bool SetAttributeInt(std::string_view name, int value, std::string_view prefix,
                         std::string_view namespaceUri) const;

    /// The line that the node ends its start tag on in the file it was read from; 0 for one that was added.
    [[nodiscard]] int GetLine() const;

private:
    friend class XmlDocument;

    XmlNode(std::shared_ptr<XmlTree> pTree, _xmlNode* pNode);

    [[nodiscard]] XmlNodePtr CreateChild(std::string_view name) const;
    /// Marks the document as one that something was refused for; false.
    bool Refuse() const;

    std::shared_ptr<XmlTree> m_tree;
    _xmlNode* m_node = nullptr;  // in the tree
};

}  // namespace veldan
