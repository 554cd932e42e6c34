#pragma once

/// What this process may not do, set by itself before it looks at the file.
namespace Confinement {

/// Bounds memory, computing time, files and privileges; none can be widened again. Ends the process where that is
/// refused, or where the parent has gone already.
/// @param parent id of the process to end with; 0 for none
void begin(int parent);

} // namespace Confinement
