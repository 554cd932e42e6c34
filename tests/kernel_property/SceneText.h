#pragma once

#include <QString>

/// A whole scene as text that can be compared: every object with its id, kind, place, name, lock, image,
/// entries and assigned sets, and every shared set with its entries and objects.
QString sceneText();
