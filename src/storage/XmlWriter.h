#pragma once

#include "storage/XmlTree.h"

struct _xmlNode;

namespace veldan {

/// Marks a text node that was added to the tree: where it is white space alone it is written as it stands, carriage
/// returns included. Read from a file, such a character came from a reference, and becomes one again.
void MarkAdded(_xmlNode& node);

/// The bytes of a file for the tree, in UTF-8 without a mark. Reading them gives an equal tree.
[[nodiscard]] CString WriteXml(const XmlTree& tree);

}  // namespace veldan
