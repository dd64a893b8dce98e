#pragma once

namespace quintara::test {

/// Makes the program names that the hosts register for the current user visible to automation where the system reads
/// those of the machine only, as some versions of Wine do: by links in the machine's part that lead to the user's.
/// Does nothing where they are visible anyway. May be called again and again.
void ShowUserClasses();

}  // namespace quintara::test
