#include "valuetables.h"

// Display texts use U+2212 for minus and the glyphs ⅓ (U+2153) and ⅔ (U+2154).

namespace kestrum {

namespace {

template <typename C>
std::vector<C> table(Fraction type, std::initializer_list<std::pair<double, const char16_t*>> rows)
{
    std::vector<C> entries;
    entries.reserve(rows.size());
    for (const auto& [value, display] : rows)
        entries.push_back(C{type, value, QString::fromUtf16(display)});
    return entries;
}

// Shutter speeds shorter than a second are listed by their denominator.
constexpr double per(double denominator)
{
    return 1.0 / denominator;
}

} // namespace

template <> const std::vector<Aperture>& ValueTables<Aperture>::full()
{
    static const auto entries = table<Aperture>(Fraction::full, {{0.7071, u"0.7"},
                                                                 {1.0, u"1"},
                                                                 {1.41, u"1.4"},
                                                                 {2.0, u"2"},
                                                                 {2.828, u"2.8"},
                                                                 {4.0, u"4"},
                                                                 {5.657, u"5.6"},
                                                                 {8.0, u"8"},
                                                                 {11.31, u"11"},
                                                                 {16.0, u"16"},
                                                                 {22.63, u"22"},
                                                                 {32.0, u"32"},
                                                                 {45.25, u"45"}});
    return entries;
}

template <> const std::vector<Aperture>& ValueTables<Aperture>::halfExtras()
{
    static const auto entries = table<Aperture>(Fraction::half, {{0.8409, u"0.8"},
                                                                 {1.189, u"1.2"},
                                                                 {1.682, u"1.7"},
                                                                 {2.378, u"2.4"},
                                                                 {3.364, u"3.3"},
                                                                 {4.757, u"4.8"},
                                                                 {6.727, u"6.7"},
                                                                 {9.514, u"9.5"},
                                                                 {13.45, u"13"},
                                                                 {19.03, u"19"},
                                                                 {26.91, u"27"},
                                                                 {38.05, u"38"}});
    return entries;
}

template <> const std::vector<Aperture>& ValueTables<Aperture>::thirdExtras()
{
    static const auto entries = table<Aperture>(
        Fraction::third,
        {{0.7937, u"0.8"}, {0.8909, u"0.9"}, {1.122, u"1.1"}, {1.26, u"1.2"},  {1.587, u"1.6"},
         {1.782, u"1.8"},  {2.245, u"2.2"},  {2.52, u"2.5"},  {3.175, u"3.2"}, {3.564, u"3.5"},
         {4.49, u"4.5"},   {5.04, u"5"},     {6.35, u"6.3"},  {7.127, u"7.1"}, {8.98, u"9"},
         {10.08, u"10"},   {12.7, u"13"},    {14.25, u"14"},  {17.96, u"18"},  {20.16, u"20"},
         {25.4, u"25"},    {28.51, u"28"},   {35.92, u"36"},  {40.32, u"40"}});
    return entries;
}

template <> const std::vector<ShutterSpeed>& ValueTables<ShutterSpeed>::full()
{
    static const auto entries = table<ShutterSpeed>(Fraction::full, {{32.0, u"30s"},
                                                                     {16.0, u"15s"},
                                                                     {8.0, u"8s"},
                                                                     {4.0, u"4s"},
                                                                     {2.0, u"2s"},
                                                                     {1.0, u"1s"},
                                                                     {0.5, u"2"},
                                                                     {0.25, u"4"},
                                                                     {0.125, u"8"},
                                                                     {0.0625, u"15"},
                                                                     {0.03125, u"30"},
                                                                     {0.015625, u"60"},
                                                                     {0.0078125, u"125"},
                                                                     {0.00390625, u"250"},
                                                                     {0.001953125, u"500"},
                                                                     {0.0009765625, u"1000"},
                                                                     {0.00048828125, u"2000"},
                                                                     {0.000244140625, u"4000"},
                                                                     {0.0001220703125, u"8000"}});
    return entries;
}

template <> const std::vector<ShutterSpeed>& ValueTables<ShutterSpeed>::halfExtras()
{
    static const auto entries = table<ShutterSpeed>(Fraction::half, {{22.63, u"20s"},
                                                                     {11.31, u"10s"},
                                                                     {5.657, u"6s"},
                                                                     {2.828, u"3s"},
                                                                     {1.414, u"1.5s"},
                                                                     {per(1.414), u"1.5"},
                                                                     {per(2.828), u"3"},
                                                                     {per(5.657), u"6"},
                                                                     {per(11.31), u"10"},
                                                                     {per(22.63), u"20"},
                                                                     {per(45.25), u"45"},
                                                                     {per(90.51), u"90"},
                                                                     {per(181), u"180"},
                                                                     {per(362), u"350"},
                                                                     {per(724.1), u"750"},
                                                                     {per(1448), u"1500"},
                                                                     {per(2896), u"3000"},
                                                                     {per(5793), u"6000"}});
    return entries;
}

template <> const std::vector<ShutterSpeed>& ValueTables<ShutterSpeed>::thirdExtras()
{
    static const auto entries = table<ShutterSpeed>(
        Fraction::third,
        {{25.4, u"25s"},       {20.16, u"20s"},      {12.7, u"13s"},       {10.08, u"10s"},
         {6.35, u"6s"},        {5.04, u"5s"},        {3.175, u"3s"},       {2.52, u"2.5s"},
         {1.587, u"1.6s"},     {1.26, u"1.3s"},      {per(1.26), u"1.3"},  {per(1.587), u"1.6"},
         {per(2.52), u"2.5"},  {per(3.175), u"3"},   {per(5.04), u"5"},    {per(6.35), u"6"},
         {per(10.08), u"10"},  {per(12.7), u"13"},   {per(20.16), u"20"},  {per(25.4), u"25"},
         {per(40.32), u"40"},  {per(50.8), u"50"},   {per(80.63), u"80"},  {per(101.6), u"100"},
         {per(161.3), u"160"}, {per(203.2), u"200"}, {per(322.5), u"320"}, {per(406.4), u"400"},
         {per(645.1), u"640"}, {per(812.7), u"800"}, {per(1290), u"1250"}, {per(1625), u"1600"},
         {per(2580), u"2500"}, {per(3251), u"3200"}, {per(5161), u"5000"}, {per(6502), u"6400"}});
    return entries;
}

template <> const std::vector<ISO>& ValueTables<ISO>::full()
{
    static const auto entries = table<ISO>(Fraction::full, {{12.5, u"12"},
                                                            {25.0, u"25"},
                                                            {50.0, u"50"},
                                                            {100.0, u"100"},
                                                            {200.0, u"200"},
                                                            {400.0, u"400"},
                                                            {800.0, u"800"},
                                                            {1600.0, u"1600"},
                                                            {3200.0, u"3200"},
                                                            {6400.0, u"6400"}});
    return entries;
}

template <> const std::vector<ISO>& ValueTables<ISO>::halfExtras()
{
    static const auto entries = table<ISO>(Fraction::half, {{17.68, u"18"},
                                                            {35.36, u"35"},
                                                            {70.71, u"70"},
                                                            {141.4, u"140"},
                                                            {282.8, u"280"},
                                                            {565.7, u"560"},
                                                            {1131.0, u"1100"},
                                                            {2263.0, u"2200"},
                                                            {4525.0, u"4400"}});
    return entries;
}

template <> const std::vector<ISO>& ValueTables<ISO>::thirdExtras()
{
    static const auto entries = table<ISO>(Fraction::third, {{15.75, u"16"},
                                                             {19.84, u"20"},
                                                             {31.5, u"32"},
                                                             {39.69, u"40"},
                                                             {63.0, u"64"},
                                                             {79.37, u"80"},
                                                             {126.0, u"125"},
                                                             {158.7, u"160"},
                                                             {252.0, u"250"},
                                                             {317.5, u"320"},
                                                             {504.0, u"500"},
                                                             {635.0, u"640"},
                                                             {1008.0, u"1000"},
                                                             {1270.0, u"1250"},
                                                             {2016.0, u"2000"},
                                                             {2540.0, u"2500"},
                                                             {4032.0, u"4000"},
                                                             {5080.0, u"5000"}});
    return entries;
}

template <> const std::vector<Compensation>& ValueTables<Compensation>::full()
{
    static const auto entries = table<Compensation>(Fraction::full, {{-3.0, u"\u22123"},
                                                                     {-2.0, u"\u22122"},
                                                                     {-1.0, u"\u22121"},
                                                                     {0.0, u"0"},
                                                                     {1.0, u"1"},
                                                                     {2.0, u"2"},
                                                                     {3.0, u"3"},
                                                                     {4.0, u"4"},
                                                                     {5.0, u"5"},
                                                                     {6.0, u"6"},
                                                                     {7.0, u"7"},
                                                                     {8.0, u"8"},
                                                                     {9.0, u"9"},
                                                                     {10.0, u"10"}});
    return entries;
}

template <> const std::vector<Compensation>& ValueTables<Compensation>::halfExtras()
{
    static const auto entries = table<Compensation>(Fraction::half, {{-2.5, u"\u22122.5"},
                                                                     {-1.5, u"\u22121.5"},
                                                                     {-0.5, u"\u22120.5"},
                                                                     {0.5, u"0.5"},
                                                                     {1.5, u"1.5"},
                                                                     {2.5, u"2.5"},
                                                                     {3.5, u"3.5"},
                                                                     {4.5, u"4.5"},
                                                                     {5.5, u"5.5"},
                                                                     {6.5, u"6.5"},
                                                                     {7.5, u"7.5"},
                                                                     {8.5, u"8.5"},
                                                                     {9.5, u"9.5"}});
    return entries;
}

// Thirds are truncated to two decimals, and ⅔ is stored before ⅓ around zero; the
// merged scale sorts, so the stored order never reaches the user.
template <> const std::vector<Compensation>& ValueTables<Compensation>::thirdExtras()
{
    static const auto entries = table<Compensation>(
        Fraction::third,
        {{-2.66, u"\u22122\u2154"}, {-2.33, u"\u22122\u2153"}, {-1.66, u"\u22121\u2154"},
         {-1.33, u"\u22121\u2153"}, {-0.66, u"\u2212\u2154"},  {-0.33, u"\u2212\u2153"},
         {0.66, u"\u2154"},         {0.33, u"\u2153"},         {1.33, u"1\u2153"},
         {1.66, u"1\u2154"},        {2.33, u"2\u2153"},        {2.66, u"2\u2154"},
         {3.33, u"3\u2153"},        {3.66, u"3\u2154"},        {4.33, u"4\u2153"},
         {4.66, u"4\u2154"},        {5.33, u"5\u2153"},        {5.66, u"5\u2154"},
         {6.33, u"6\u2153"},        {6.66, u"6\u2154"},        {7.33, u"7\u2153"},
         {7.66, u"7\u2154"},        {8.33, u"8\u2153"},        {8.66, u"8\u2154"},
         {9.33, u"9\u2153"},        {9.66, u"9\u2154"}});
    return entries;
}

} // namespace kestrum
