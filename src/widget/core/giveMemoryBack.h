#pragma once

/// Gives the system back what large work has taken and freed; the C library would keep much of it
/// for later. Takes milliseconds, so it is nothing for the main thread.
void giveMemoryBack();
