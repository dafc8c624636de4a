#include "PGAlertController/Source/PGAlertActionConcrete.h"

namespace purgo {

std::shared_ptr<PGAlertActionConcrete>
PGAlertActionConcrete::actionWithTitle(std::optional<std::string> title, std::intptr_t style,
                                       const Handler& /*handler*/) {
    return std::make_shared<PGAlertActionConcrete>(std::move(title), style);
}

} // namespace purgo
