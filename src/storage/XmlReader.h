#pragma once

#include "storage/XmlTree.h"

namespace veldan {

/// Why a document could not be read, for a person.
struct XmlFault {
    /// Counted from 1; 0 where no line is to blame.
    int nLine = 0;
    CString strWhat;
};

/// Builds the tree of a file's bytes. Null, and the reason in `fault`, for a document that isn't well-formed in every
/// respect, namespaces included, has a document type, or goes beyond the limits of `XmlLimits.h`. White space alone
/// among the root's children is left out, unless the root asks for it to be kept.
[[nodiscard]] std::shared_ptr<XmlTree> ReadXml(CString bytes, XmlFault& fault);

}  // namespace veldan
