#pragma once

// Forgets the clicks and keys that came while a tool kept the window busy: they were meant for what
// stood there then, not for the page or message that stands there now. User-interface thread.
void forgetPendingInput();
