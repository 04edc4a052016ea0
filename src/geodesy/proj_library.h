// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <proj.h>
#include <string>

namespace tessel {

/// What the program calls of PROJ (https://proj.org/development/reference/functions.html), each under the
/// name that it has there behind "proj_". The library brings more than thirty others, which were a third of
/// the program's start when it was linked: it is opened where coordinate systems are first asked for.
class ProjLibrary {
  public:
    /// Opens the library of this file name, for as long as the program runs. Throws RunTimeError (file) with
    /// the system's reason if it cannot be opened or lacks a function.
    explicit ProjLibrary(const std::string& name);

    /// The one that the program was built for, opened at the first call; null where it cannot be opened.
    static const ProjLibrary* ofSystem();

  private:
    struct Address {
        void* value;

        template <typename Function>
        operator Function*() const {
            return reinterpret_cast<Function*>(value);
        }
    };
    Address addressOf(const char* function) const;

    std::string name_;
    void* library_ = nullptr;

  public:
    decltype(&proj_as_wkt) as_wkt = addressOf("proj_as_wkt");
    decltype(&proj_context_create) context_create = addressOf("proj_context_create");
    decltype(&proj_context_destroy) context_destroy = addressOf("proj_context_destroy");
    decltype(&proj_create) create = addressOf("proj_create");
    decltype(&proj_create_crs_to_crs) create_crs_to_crs = addressOf("proj_create_crs_to_crs");
    decltype(&proj_create_from_wkt) create_from_wkt = addressOf("proj_create_from_wkt");
    decltype(&proj_crs_get_coordinate_system) crs_get_coordinate_system =
        addressOf("proj_crs_get_coordinate_system");
    decltype(&proj_crs_get_sub_crs) crs_get_sub_crs = addressOf("proj_crs_get_sub_crs");
    decltype(&proj_crs_info_list_destroy) crs_info_list_destroy = addressOf("proj_crs_info_list_destroy");
    decltype(&proj_cs_get_axis_info) cs_get_axis_info = addressOf("proj_cs_get_axis_info");
    decltype(&proj_destroy) destroy = addressOf("proj_destroy");
    decltype(&proj_get_crs_info_list_from_database) get_crs_info_list_from_database =
        addressOf("proj_get_crs_info_list_from_database");
    decltype(&proj_get_crs_list_parameters_create) get_crs_list_parameters_create =
        addressOf("proj_get_crs_list_parameters_create");
    decltype(&proj_get_crs_list_parameters_destroy) get_crs_list_parameters_destroy =
        addressOf("proj_get_crs_list_parameters_destroy");
    decltype(&proj_get_id_code) get_id_code = addressOf("proj_get_id_code");
    decltype(&proj_get_name) get_name = addressOf("proj_get_name");
    decltype(&proj_get_source_crs) get_source_crs = addressOf("proj_get_source_crs");
    decltype(&proj_get_type) get_type = addressOf("proj_get_type");
    decltype(&proj_log_level) log_level = addressOf("proj_log_level");
    decltype(&proj_normalize_for_visualization) normalize_for_visualization =
        addressOf("proj_normalize_for_visualization");
    decltype(&proj_trans_generic) trans_generic = addressOf("proj_trans_generic");
};

}  // namespace tessel
