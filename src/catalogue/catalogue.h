#pragma once

/// The catalogue's two screens, each a single instance that its first touch loads.
namespace catalogue {

class FrSerials;
class FrColorKind;

/// The series editor. Raises what opening the store raises, where this touch loads the form.
FrSerials& frSerials();
/// The editor of kinds and colours. Raises likewise.
FrColorKind& frColorKind();

} // namespace catalogue
