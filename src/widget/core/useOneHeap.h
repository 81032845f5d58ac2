#pragma once

/// Makes all threads share one heap, and large blocks go back to the system as soon as they are
/// freed: a program that mostly rests wants little memory, not many allocations at a time. To be
/// called before the first thread.
void useOneHeap();
