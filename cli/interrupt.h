#ifndef TESSARIL_CLI_INTERRUPT_H_
#define TESSARIL_CLI_INTERRUPT_H_

namespace tessaril {

/// From now on Ctrl-C, and what else asks the program to end, is only noted: a run ends at its next test, and
/// never between the steps of writing a file. What the caller chose to ignore (nohup) stays ignored. A closed
/// pipe or a limit on file sizes is a failed write.
void NoteInterrupts();

/// Ends the run in the same way.
void Interrupt();

/// Whether the user has asked to end since NoteInterrupts.
bool Interrupted();

}  // namespace tessaril

#endif  // TESSARIL_CLI_INTERRUPT_H_
