#pragma once

#include <functional>

namespace shading {

class Actions;
class DocumentView;

/// Adds what makes pictures of the document in front, and the switch of the minimaps. The function
/// gives the view of that document, null when there is none.
void addPictureActions(Actions& actions, const std::function<DocumentView*()>& front);

} // namespace shading
