// The desktop's file dialog, or Qt's own where there is none.
#pragma once

#include <optional>

#include "platform/toolkit/FileChoice.h"

class QWidget;

namespace toolkit {

// Asks until there is an answer that holds: a file that may be written (a new one, or one that the user has agreed to
// replace), or one to open; nothing when cancelled. A file to open may be missing where the desktop's dialog lets it
// be.
std::optional<QString> AskForFile(QWidget* pWindow, const FileRequest& tRequest);

}  // namespace toolkit
