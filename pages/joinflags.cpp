#include "pages/joinflags.h"

bool joining = false;
bool enrolling = false;
