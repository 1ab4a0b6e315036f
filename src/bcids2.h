#pragma once
// Every type code, message id, control id and command id of the library, defined once. Each
// family keeps its own section; tests keep literal numbers as an independent check.

// ---- containers ----
namespace bcids {
} // namespace bcids
// ---- end of containers ----

// ---- data objects ----
namespace bcids {
} // namespace bcids
// ---- end of data objects ----

// ---- graphics ----
namespace bcids {
} // namespace bcids
// ---- end of graphics ----
