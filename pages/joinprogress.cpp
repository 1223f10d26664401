#include "pages/joinprogress.h"

bool joining = false;
bool enrolling = false;
