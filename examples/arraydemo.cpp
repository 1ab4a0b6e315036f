// Fills a sorted array list of cities, saves it to a file, loads it back into a fresh list
// and prints what was loaded.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>

#include <norlib2.h>

namespace {

struct City {
    char name[24];
    long population; // the key
};

void* KeyOf(long value) {
    return reinterpret_cast<void*>(static_cast<intptr_t>(value));
}

BCArrayList MakeList() {
    return BCArrayList(0, sizeof(City), offsetof(City, population), sizeof(long), 8,
                       BC_FLAG_SORTED);
}

} // namespace

int main(int argc, char** argv) {
    const char* path = argc > 1 ? argv[1] : "cities.lst";
    const City cities[] = {{"Tallinn", 438341},  {"Reykjavik", 139875}, {"Oslo", 709037},
                           {"Helsinki", 664028}, {"Riga", 605273},      {"Vilnius", 592389}};

    BCArrayList list = MakeList();
    for (const City& city : cities)
        list.Insert(KeyOf(city.population), const_cast<City*>(&city));
    {
        std::ofstream out(path, std::ios::binary);
        if (!list.Save(out)) {
            std::printf("could not save %s\n", path);
            return 1;
        }
    }

    BCArrayList loaded = MakeList();
    std::ifstream in(path, std::ios::binary);
    if (!loaded.Load(in)) {
        std::printf("could not load %s\n", path);
        return 1;
    }
    std::printf("%s: %lu cities, smallest first\n", loaded.GetObjectTypeStr(), loaded.GetCount());
    for (int more = loaded.Home(); more; more = loaded.Next()) {
        City* city = static_cast<City*>(loaded.GetCrntItem());
        std::printf("  %2lu  %-10s %8ld\n", loaded.GetCrntInd(), city->name, city->population);
        delete[] reinterpret_cast<unsigned char*>(city);
    }
    return 0;
}
