#pragma once

#include <QString>

#include <optional>

namespace kestrum {

/// The app icons the settings screen offers: one drawing of a light meter in four
/// colourings, Light, Dark, Yellow and Classic, in that order. Light is the app's own
/// icon; the others are its alternate icons, which the launcher's entry names by the
/// colouring ("Dark" → `<app id>-Dark`, see AppIcon). The drawings are compiled into the
/// app, so that the picker and the window show them whether or not the app is installed.
namespace AppIcons {

/// The row of Light, the app's own icon.
inline constexpr int kLightRow = 0;

/// How many icons are on offer.
int count();

/// The row of the icon whose alternate name is `alternateName`, as the launcher's entry
/// names it: the app's own (an empty name), and any name not on offer, read as Light.
int rowOf(const QString& alternateName);

/// The alternate name that shows the icon at `row` ("" for Light); nothing for a row not
/// on offer.
std::optional<QString> alternateName(int row);

/// The colouring's name, the title shown and read out ("Light", from the catalogue);
/// empty for a row not on offer.
QString title(int row);

/// Where the drawing of the icon at `row` is compiled in (":/kestrum/icons/Dark.svg");
/// that of Light for a row not on offer.
QString picturePath(int row);

} // namespace AppIcons

} // namespace kestrum
