#pragma once

class QThread;

// The threads of recorders and readers. Nobody waits for them while the program runs: each owns what it works
// with, and deletes itself. At the end of the program all that still run are given 5 s together.
namespace RecordingThreads {

// Takes the thread over and starts it; in the thread of the program's windows.
void start(QThread *thread);

} // namespace RecordingThreads
