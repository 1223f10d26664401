#pragma once

// On a Mac, loads the application kit and holds a pool for its objects for as long as it lives;
// elsewhere does nothing. One per process, on the user-interface thread.
class CocoaInitializer
{
public:
    CocoaInitializer();
    ~CocoaInitializer();
    CocoaInitializer(const CocoaInitializer&) = delete;
    CocoaInitializer& operator=(const CocoaInitializer&) = delete;

private:
    struct Private;
    Private* d;
};
