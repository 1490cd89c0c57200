// The platform's key manager.
#pragma once

typedef unsigned char (*OnKeyEventListener)(unsigned long keyCode, unsigned long id,
                                            unsigned long sym);

// Where the platform sends keys; default gives them back to the TV.
enum EN_ZYT_KEY_ROUTING : int {
    E_ZYT_KEY_ROUTING_DEFAULT = 1,
};

class KeyManager {
public:
    void setOnKeyEventListener(OnKeyEventListener listener);

    void setKeyRouting(EN_ZYT_KEY_ROUTING routing);
};
