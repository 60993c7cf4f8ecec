// Runs one invariant breach named on the command line; it must stop the program.

#include "exposure/calculator.h"
#include "exposure/scale.h"

#include <QString>

#include <cmath>
#include <cstdio>
#include <cstring>

using namespace kestrum;

int main(int argc, char* argv[])
{
    const char* breach = argc > 1 ? argv[1] : "";
    if (std::strcmp(breach, "reversed-limits") == 0)
        cutScale<Aperture>(scale<Aperture>(Fraction::full), 16.0, 2.0);
    else if (std::strcmp(breach, "empty-scale") == 0)
        nearestEntry<ISO>(std::span<const ISO>(), 100.0);
    else if (std::strcmp(breach, "identity-of-nan") == 0)
        std::puts(qPrintable((Aperture{Fraction::full, std::nan(""), "x"}.id())));
    else if (std::strcmp(breach, "identity-out-of-range") == 0)
        std::puts(qPrintable((ShutterSpeed{Fraction::full, 1e17, "x"}.id())));
    else if (std::strcmp(breach, "no-profile") == 0)
        Calculator([] { return nullptr; }).possibleApertures();
    std::puts("survived");
    return 0;
}
