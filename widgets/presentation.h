#pragma once

class QDialog;
class QString;

// For a dialog without a parent, when it is shown: centres it over the window that the user works
// in, where the window system lets it, keeps it in front of that window, and offers `message` to
// screen readers. User-interface thread.
void presentDialog(QDialog* dialog, const QString& message);

// Whether a modal dialog is up. The windows below it take no key or click then, but an assistive
// tool can press their buttons: Next, Back, About, Browse and Choose ask. User-interface thread.
bool isUnderDialog();
