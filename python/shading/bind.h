#pragma once

#include "shading/pyDocument.h"

#include <memory>
#include <pybind11/pybind11.h>

namespace zelshading {

using DocumentClass = pybind11::class_<PyDocument, std::unique_ptr<PyDocument>>;

/// A document for Python.
pybind11::object toDocument(std::unique_ptr<shading::Session> session,
                            std::vector<shading::Message> messages);

// Each defines a part of zel.shading.Document.
void bindViews(DocumentClass& document);
void bindWalk(pybind11::module_& module, DocumentClass& document);
void bindNodeEdits(DocumentClass& document);
void bindWireEdits(DocumentClass& document);
void bindPortEdits(DocumentClass& document);
void bindBackdropEdits(DocumentClass& document);
void bindHistory(pybind11::module_& module, DocumentClass& document);
void bindPictures(DocumentClass& document);
/// Also the functions that open one.
void bindFiles(pybind11::module_& module, DocumentClass& document);

} // namespace zelshading
