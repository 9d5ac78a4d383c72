#pragma once

// Ctrl+C, and who asks the program to end in another way.
namespace Interruption {

// From now on the first is noted in place of ending the program at once; a second one ends it. A pipe that
// nobody reads and a file that may not grow are errors of who writes.
void prepare();
// Whether it has been asked. A signal handler may do no more than set a flag, so somebody has to look.
bool isAsked();

constexpr int pause = 50; // ms between two looks

} // namespace Interruption
