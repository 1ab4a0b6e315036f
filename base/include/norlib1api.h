#pragma once
// Export and import decoration of the base module.
#ifdef NORLIB1_BUILD
#define NORLIB1_API __declspec(dllexport)
#else
#define NORLIB1_API __declspec(dllimport)
#endif
