#include <cstdint>
#include <cstdio>
#include <string>
#include <norlib1.h>
#include <norlib2.h>

int main() {
    BCArrayList list(0, sizeof(int), 0, sizeof(int), 4, BC_FLAG_SORTED);
    for (int value : {3, 1, 2})
        list.Insert(reinterpret_cast<void*>(static_cast<intptr_t>(value)), &value);
    list.Home();
    int* first = static_cast<int*>(list.GetCrntItem());
    bool ok = first && *first == 1 && list.GetCount() == 3 &&
              std::string(list.GetObjectTypeStr()) == "BCArrayList" && BCGetDLLModule2();
    delete[] reinterpret_cast<unsigned char*>(first);
    std::printf("consumer: %s\n", ok ? "ok" : "FAILED");
    return ok ? 0 : 1;
}
