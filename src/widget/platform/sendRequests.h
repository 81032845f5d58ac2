#pragma once

/// Has the window system learn now what the program has asked of it so far. Qt itself waits with
/// that until it draws, or until the window system tells of something.
void sendRequests();
