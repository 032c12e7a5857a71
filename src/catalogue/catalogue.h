#pragma once

/// The two forms of the catalogue: the series editor and the editor of kinds and colours. Each form
/// has one instance, which is created at first use.
namespace catalogue {

class FrSerials;
class FrColorKind;

/// Returns the series editor. The first call creates the form and throws any error of
/// store::OpenMyDataBase, such as DatabaseFileNotFound (3024) or Locked (3260).
FrSerials& frSerials();
/// Returns the editor of kinds and colours. The first call creates the form and throws any error of
/// store::OpenMyDataBase, such as DatabaseFileNotFound (3024) or Locked (3260).
FrColorKind& frColorKind();

} // namespace catalogue
