// The one place where the ids of the interface stand.
#include "automation/dispatch/com.h"

#include <initguid.h>

#include <quintara_idl.h>
