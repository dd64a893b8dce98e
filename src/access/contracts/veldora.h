#pragma once

/// What the logic needs of the vault: one abstract class for each kind of object, with the operations
/// under the vault's own names. Every operation may raise a Failure. Texts are UTF-8.
#include "access/contracts/hix_engine.h"
#include "access/contracts/veldora_meta.h"
#include "access/contracts/veldora_objects.h"
#include "access/contracts/veldora_records.h"
#include "access/contracts/veldora_services.h"
#include "access/contracts/veldora_session.h"
