#pragma once

// How the load of a container tree ended.
enum CNBROWSER_ERROR {
    CNBROWSER_SUCCESS = 0,             // the tree is drawn, or was already
    CNBROWSER_MISSING_DOMAIN_INFO = 1, // domain, user or password was empty; nothing was loaded
    CNBROWSER_NO_DATA = 2,             // the script gave no usable container data
};
