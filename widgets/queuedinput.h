#pragma once

#include <functional>

class QObject;

// Calls the function from the event loop, once what a person did until now has been handled: while
// a tool keeps the program busy, keys, clicks and assistive presses queue up unheard. Does not call
// it when the receiver is deleted first. User-interface thread.
void afterQueuedInput(QObject* receiver, const std::function<void()>& function);
