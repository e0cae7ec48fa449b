// The member that names, in the class's interface, the exceptions that the class raises.
#include "userdefaults/class_members.h"

REALobject DummyException(REALobject)
{
    return nullptr;
}
