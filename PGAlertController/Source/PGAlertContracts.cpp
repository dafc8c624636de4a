#include "PGAlertController/Source/PGAlertContracts.h"

#include <limits>

namespace purgo {

constinit const platform::CGRect kPGACInvalidRect = {std::numeric_limits<platform::CGFloat>::max(),
                                                     std::numeric_limits<platform::CGFloat>::max(),
                                                     0, 0};

} // namespace purgo
