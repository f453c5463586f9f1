// What the pages let the user change, as operations of the document.
#pragma once

namespace q40 {

class CloneDocument;
class MainPages;

// The document must outlive the pages.
void ConnectEdits(MainPages& pages, CloneDocument& document);

}  // namespace q40
