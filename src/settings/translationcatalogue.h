#pragma once

class QCoreApplication;

namespace kestrum {

/// Installs the app's text catalogue (id-based, e.g. "profile.default") in `app`:
/// the catalogue of the user's language, else English. Call once, right after the
/// application object is made and before any text is looked up; the app and the
/// command-line tool both do. False when no catalogue could be loaded, in which
/// case texts read as their ids.
bool installTranslationCatalogue(QCoreApplication& app);

} // namespace kestrum
