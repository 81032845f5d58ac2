#pragma once

/// Ends the program unless it runs in a home directory made for it: it writes there.
void requireOwnHome();
