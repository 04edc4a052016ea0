// SPDX-License-Identifier: GPL-3.0-or-later
#include "geodesy/coordinate_systems.h"

#include "base/run_time_error.h"
#include "geodesy/proj_library.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

namespace tessel {

namespace {

// Nothing is known where there is no library: no list, no system, no way. The rest is asked of what it has
// made.
bool isProjThere() {
    return ProjLibrary::ofSystem() != nullptr;
}

const ProjLibrary& proj() {
    return *ProjLibrary::ofSystem();
}

struct DestroyProj {
    void operator()(PJ* object) const { proj().destroy(object); }
};
using Proj = std::unique_ptr<PJ, DestroyProj>;

// One for the program, which has one thread. The library says nothing to the terminal.
PJ_CONTEXT* context() {
    static const std::unique_ptr<PJ_CONTEXT, PJ_CONTEXT* (*)(PJ_CONTEXT*)> kContext = [] {
        PJ_CONTEXT* const made = proj().context_create();
        proj().log_level(made, PJ_LOG_NONE);
        return std::unique_ptr<PJ_CONTEXT, PJ_CONTEXT* (*)(PJ_CONTEXT*)>(made, proj().context_destroy);
    }();
    return kContext.get();
}

std::string textOf(const char* text) {
    return text == nullptr ? std::string() : text;
}

int numberIn(std::string_view text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? number : 0;
}

std::vector<CoordinateSystem> readSystems() {
    if (!isProjThere()) return {};
    PROJ_CRS_LIST_PARAMETERS* const wanted = proj().get_crs_list_parameters_create();
    const PJ_TYPE projected = PJ_TYPE_PROJECTED_CRS;
    wanted->types = &projected;
    wanted->typesCount = 1;
    int count = 0;
    PROJ_CRS_INFO** const found = proj().get_crs_info_list_from_database(context(), "EPSG", wanted, &count);
    proj().get_crs_list_parameters_destroy(wanted);
    std::vector<CoordinateSystem> systems;
    for (int i = 0; found != nullptr && i < count; ++i) {
        const PROJ_CRS_INFO& each = *found[i];
        systems.push_back({numberIn(textOf(each.code)), textOf(each.name), textOf(each.area_name),
                           each.west_lon_degree, each.south_lat_degree, each.east_lon_degree,
                           each.north_lat_degree});
    }
    proj().crs_info_list_destroy(found);
    std::erase_if(systems, [](const CoordinateSystem& system) { return system.number == 0; });
    std::ranges::sort(systems, {}, &CoordinateSystem::number);
    return systems;
}

char lowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool holds(std::string_view text, std::string_view part) {
    const auto same = [](char a, char b) { return lowerCase(a) == lowerCase(b); };
    return std::search(text.begin(), text.end(), part.begin(), part.end(), same) != text.end() ||
           part.empty();
}

std::vector<std::string_view> wordsOf(std::string_view text) {
    std::vector<std::string_view> words;
    for (std::size_t begin = 0; (begin = text.find_first_not_of(" \t", begin)) != text.npos;) {
        const std::size_t end = std::min(text.find_first_of(" \t", begin), text.size());
        words.push_back(text.substr(begin, end - begin));
        begin = end;
    }
    return words;
}

std::string authorityName(int number) {
    return "EPSG:" + std::to_string(number);
}

// Null for one that is not known.
Proj systemOf(int number) {
    return Proj(number > 0 && isProjThere() ? proj().create(context(), authorityName(number).c_str())
                                            : nullptr);
}

struct AxisUnit {
    double metres = 0;
    std::string name;
};

// Of the first axis.
std::optional<AxisUnit> unitOf(const Proj& system) {
    const Proj axes(system ? proj().crs_get_coordinate_system(context(), system.get()) : nullptr);
    AxisUnit unit;
    const char* name = nullptr;
    if (!axes || proj().cs_get_axis_info(context(), axes.get(), 0, nullptr, nullptr, nullptr, &unit.metres,
                                         &name, nullptr, nullptr) == 0)
        return std::nullopt;
    unit.name = textOf(name);
    return unit;
}

// Without its heights, and without a way to another system.
Proj horizontalPart(Proj system) {
    while (system) {
        const PJ_TYPE type = proj().get_type(system.get());
        if (type == PJ_TYPE_COMPOUND_CRS)
            system.reset(proj().crs_get_sub_crs(context(), system.get(), 0));
        else if (type == PJ_TYPE_BOUND_CRS)
            system.reset(proj().get_source_crs(context(), system.get()));
        else
            break;
    }
    return system;
}

SystemKind kindOf(const Proj& system) {
    switch (system ? proj().get_type(system.get()) : PJ_TYPE_UNKNOWN) {
        case PJ_TYPE_PROJECTED_CRS: {
            const std::optional<AxisUnit> unit = unitOf(system);
            return unit && unit->metres == 1 ? SystemKind::kMetres : SystemKind::kOther;
        }
        case PJ_TYPE_GEOGRAPHIC_2D_CRS:
        case PJ_TYPE_GEOGRAPHIC_3D_CRS:
            return SystemKind::kOther;
        case PJ_TYPE_GEOCENTRIC_CRS:
        case PJ_TYPE_VERTICAL_CRS:
            return SystemKind::kNone;
        default:
            return SystemKind::kUnknown;
    }
}

int numberOf(const Proj& system) {
    return system ? numberIn(textOf(proj().get_id_code(system.get(), 0))) : 0;
}

[[noreturn]] void failFor(int number) {
    throw RunTimeError(RunTimeError::kFile,
                       "No way is known from degrees of WGS 84 to " + shownName(number) + ".");
}

}  // namespace

bool CoordinateSystem::isUsedAt(GeographicPosition position) const {
    if (position.latitude < south || position.latitude > north) return false;
    const bool behindWest = position.longitude >= west, beforeEast = position.longitude <= east;
    return west <= east ? behindWest && beforeEast : behindWest || beforeEast;
}

std::string shownName(const CoordinateSystem& system) {
    return authorityName(system.number) + "  " + system.name;
}

std::string shownName(int number) {
    const CoordinateSystem* const system = coordinateSystem(number);
    return system == nullptr ? authorityName(number) : shownName(*system);
}

const std::vector<CoordinateSystem>& coordinateSystems() {
    static const std::vector<CoordinateSystem> kSystems = readSystems();
    return kSystems;
}

const CoordinateSystem* coordinateSystem(int number) {
    const auto& systems = coordinateSystems();
    const auto found = std::ranges::lower_bound(systems, number, {}, &CoordinateSystem::number);
    return found != systems.end() && found->number == number ? &*found : nullptr;
}

std::vector<const CoordinateSystem*> findCoordinateSystems(std::string_view text,
                                                           const std::optional<GeographicPosition>& position,
                                                           std::size_t most) {
    const std::vector<std::string_view> words = wordsOf(text);
    const auto fits = [&](const CoordinateSystem& system) {
        if (words.empty()) return !position || system.isUsedAt(*position);
        if (words.size() == 1 && std::to_string(system.number).starts_with(words[0])) return true;
        return std::ranges::all_of(words, [&](std::string_view word) { return holds(system.name, word); });
    };
    std::vector<const CoordinateSystem*> found;
    for (const CoordinateSystem& system : coordinateSystems())
        if (fits(system)) found.push_back(&system);
    if (position)
        std::stable_partition(found.begin(), found.end(),
                              [&](const auto* each) { return each->isUsedAt(*position); });
    if (found.size() > most) found.resize(most);
    return found;
}

std::string whyNotInMetres(int number) {
    const Proj system = systemOf(number);
    const std::optional<AxisUnit> unit = unitOf(system);
    if (!unit) return "This coordinate system is not known.";
    if (unit->metres != 1) return "The unit of this system is the " + unit->name + ", not the metre.";
    return proj().get_type(system.get()) == PJ_TYPE_PROJECTED_CRS
               ? ""
               : "This coordinate system is none of a map.";
}

HorizontalSystem horizontalSystem(int number, const std::string& definition) {
    Proj system = systemOf(number);
    const bool isNumbered = system != nullptr;
    if (!isNumbered && isProjThere())
        system.reset(proj().create_from_wkt(context(), definition.c_str(), nullptr, nullptr, nullptr));
    const Proj part = horizontalPart(std::move(system));
    return {kindOf(part), isNumbered ? numberOf(part) : 0};
}

SystemDefinition definitionOf(int number) {
    const Proj found = systemOf(number);
    if (!found) return {authorityName(number), "undefined"};
    const char* const onOneLine[] = {"MULTILINE=NO", nullptr};
    const char* const text = proj().as_wkt(context(), found.get(), PJ_WKT1_GDAL, onOneLine);
    return {textOf(proj().get_name(found.get())), text == nullptr ? "undefined" : text};
}

struct Transformation::Way {
    Proj steps;

    void apply(PJ_DIRECTION direction, double* x, double* y, std::size_t count) const {
        proj().trans_generic(steps.get(), direction, x, sizeof(double), count, y, sizeof(double), count,
                             nullptr, 0, 0, nullptr, 0, 0);
    }
};

Transformation::Transformation(int number) {
    if (!isProjThere()) failFor(number);
    const Proj inOwnOrder(
        proj().create_crs_to_crs(context(), "EPSG:4326", authorityName(number).c_str(), nullptr));
    // X is the easting and the longitude, whatever order the systems' own definitions have.
    Proj normal(inOwnOrder ? proj().normalize_for_visualization(context(), inOwnOrder.get()) : nullptr);
    if (!normal) failFor(number);
    way_ = std::make_unique<Way>();
    way_->steps = std::move(normal);
}

Transformation::~Transformation() = default;

void Transformation::toMetres(double* x, double* y, std::size_t count) const {
    way_->apply(PJ_FWD, x, y, count);
}

void Transformation::toDegrees(double* x, double* y, std::size_t count) const {
    way_->apply(PJ_INV, x, y, count);
}

}  // namespace tessel
