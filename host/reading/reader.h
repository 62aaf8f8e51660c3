#pragma once

#include "base/message.h"
#include "zel.h"

#include <vector>

namespace shading {

class Document;
class Progress;
class XmlSource;

/// Makes the network of a document and returns its root node. The document and the XML must
/// outlive it. What does not resolve is left out and reported; the XML is not changed. Private to
/// the host's library.
ZEL::AddRefWrapper<ZEL::Node> readNetwork(Document& document,
                                          const XmlSource& xml,
                                          std::vector<Message>& warnings,
                                          Progress& progress);

} // namespace shading
