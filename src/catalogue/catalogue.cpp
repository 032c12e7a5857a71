#include "catalogue/catalogue.h"

#include "catalogue/fr_color_kind.h"
#include "catalogue/fr_serials.h"

namespace catalogue {

FrSerials& frSerials()
{
    static controls::DefaultInstance<FrSerials> form;
    return form();
}

FrColorKind& frColorKind()
{
    static controls::DefaultInstance<FrColorKind> form;
    return form();
}

} // namespace catalogue
