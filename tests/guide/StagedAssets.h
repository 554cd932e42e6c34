#pragma once

/// An asset database as a team leaves it: with versions of several people, stored on days that are always the same.
namespace StagedAssets {

/// Publishes these of the scene's sets and gives what was stored its people and days. Ends the program where the database
/// does not take it.
void publish();

} // namespace StagedAssets
