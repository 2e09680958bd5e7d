// What a screen reader is told of pages, check boxes and toolbar buttons, where Qt's own answer would mislead it, and
// what its press does: the same as a click.
#pragma once

namespace toolkit {

// Once for the program; again changes nothing.
void InstallReaderAccess();

}  // namespace toolkit
