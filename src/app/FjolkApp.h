#pragma once

#include "platform/Geometry.h"

class AttributeStore;
class FjolkWin;

// The program: opens its one window where the welcome screen was last seen.
class FjolkApp {
public:
    explicit FjolkApp(AttributeStore& store);
    ~FjolkApp();
    FjolkApp(const FjolkApp&) = delete;
    FjolkApp& operator=(const FjolkApp&) = delete;

    FjolkWin* Fonster() const { return fonster; }

private:
    FjolkWin* fonster = nullptr;
    BRect fonsterRam;
};
