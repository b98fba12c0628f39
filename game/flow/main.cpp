// Quarrow's entry point. The game takes no arguments and reads no
// configuration: everything it needs is compiled in or in ./Resources.
#include "GameMain.h"

int main() {
    return GameMain();
}
