#pragma once

#include "platform/core/Text.h"

#include <memory>

// The engine's own types, whose headers only the sources beside this one include.
struct _xmlDoc;

namespace veldan {

/// A document in the engine's form, with what the engine doesn't keep. Owned by the document and its node handles
/// together, so that a handle may outlive the document.
struct XmlTree {
    struct Free {
        void operator()(_xmlDoc* pFreed) const;
    };

    std::unique_ptr<_xmlDoc, Free> pDocument;

    /// As it is written; empty for a file without one. It names no encoding.
    CString strDeclaration;

    /// What ends the lines of the file.
    CString strLineEnd = "\r\n";

    /// Whether the lines between the root's children are the writer's own: the tree holds none of the file's.
    bool bLaysOutRoot = false;

    /// Set once something that XML can't hold was to be written into the tree. Such a document isn't saved.
    bool bRefused = false;
};

}  // namespace veldan
