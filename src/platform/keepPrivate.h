#pragma once

/// Makes what this process leaves behind its user's alone, and that of the programs it starts too:
/// no file that they create can be read by others, whatever the umask was, and a crash leaves no
/// core dump, which would hold the account's token and the passwords that were typed.
///
/// To be called before anything is opened. For a debugger, `prlimit --core=unlimited` undoes the
/// part about core dumps.
void keepPrivate();
