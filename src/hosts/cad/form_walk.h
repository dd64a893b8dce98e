#pragma once

#include "hosts/cad/cad_host.h"
#include "hosts/cad/occurrence.h"

namespace quintara::cad {

/// Brings `root` and every node below it into the form that `form` gives for it.
void ChooseForms(Occurrence& root, const FormChoice& form);

}  // namespace quintara::cad
