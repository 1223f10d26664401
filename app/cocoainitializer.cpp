#include "app/cocoainitializer.h"

CocoaInitializer::CocoaInitializer() : d(nullptr) {}

CocoaInitializer::~CocoaInitializer() {}
