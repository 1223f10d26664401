#pragma once

// Keeps the Mac's application kit ready for as long as it lives; elsewhere there is nothing to
// keep. One per process, on the user-interface thread.
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
