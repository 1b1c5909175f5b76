#include "TCatalogue.h"

#include <cstdio>

// velmarkion-catalogue TABLES DEVICES: makes the chip descriptions and their lists from the tables.
int main(int argc, char** argv)
{
    if (argc != 3) {
        fputs("Usage: velmarkion-catalogue TABLES DEVICES\n"
              "Makes the descriptions in the folder DEVICES from the tables in the folder TABLES,\n"
              "as in: velmarkion-catalogue data/chips data/devices\n",
              stderr);
        return 2;
    }
    TCatalogue catalogue;
    if (!catalogue.read(QString::fromLocal8Bit(argv[1])) ||
        !catalogue.write(QString::fromLocal8Bit(argv[2]))) {
        fprintf(stderr, "velmarkion-catalogue: %s\n", qPrintable(catalogue.error()));
        return 1;
    }
    printf("%d chips\n", catalogue.chipCount());
    return 0;
}
