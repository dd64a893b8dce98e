#pragma once

#include "automation/dispatch/com.h"

// Made from quintara.idl, and sound only behind the operating system's headers.
#include <quintara_idl.h>
