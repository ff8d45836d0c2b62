// viewport.cpp - viewport records: defaults, setters, projection both ways, camera.
#include "view/viewport.h"

Viewport View_Initial() {
    Viewport vp;
    return vp;
}
