// The platform's key manager.
#pragma once

typedef unsigned char (*OnKeyEventListener)(unsigned long keyCode, unsigned long id,
                                            unsigned long sym);

class KeyManager {
public:
    void setOnKeyEventListener(OnKeyEventListener listener);
};
