#pragma once
// Export and import decoration of the string module.
#ifdef NORSTR_BUILD
#define NORSTR_API __declspec(dllexport)
#else
#define NORSTR_API __declspec(dllimport)
#endif
