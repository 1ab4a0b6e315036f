#pragma once
// Export and import decoration of the library.
#ifdef NORLIB2_BUILD
#define NORLIB2_API __declspec(dllexport)
#else
#define NORLIB2_API __declspec(dllimport)
#endif
