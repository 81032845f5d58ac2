#pragma once

/// Makes what this process leaves behind its user's alone, and that of the programs it starts too:
/// no file that they create can be read by others, whatever the umask was, and a crash leaves no
/// core dump, which would hold the account's token and the passwords that were typed.
///
/// To be called before anything is opened. For a debugger, `prlimit --core=unlimited` undoes the
/// part about core dumps.
void keepPrivate();

/// Sets all that back to what it was. For a process that is about to become a program of the
/// user's, which is none of ours; it may be called between fork and exec.
void undoKeepPrivate();
