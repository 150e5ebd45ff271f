#pragma once

/// @file
/// Everything that a host or a plug-in may use.

#include "vrllib/attributes/attributes.h"
#include "vrllib/attributes/length_angle.h"
#include "vrllib/attributes/value.h"
#include "vrllib/attributes/value_array.h"
#include "vrllib/attributes/value_distribution.h"
#include "vrllib/attributes/value_range.h"
#include "vrllib/base/version.h"
#include "vrllib/core/blob.h"
#include "vrllib/core/change_counter.h"
#include "vrllib/core/enum_list.h"
#include "vrllib/core/io.h"
#include "vrllib/core/labels.h"
#include "vrllib/core/messages.h"
#include "vrllib/core/wavelength.h"
#include "vrllib/doc/texstream.h"
#include "vrllib/model/building_block.h"
#include "vrllib/model/component.h"
#include "vrllib/model/composite.h"
#include "vrllib/model/cross_section.h"
#include "vrllib/model/foundry.h"
#include "vrllib/model/mode_model.h"
#include "vrllib/model/netlist.h"
#include "vrllib/model/process_flow.h"
#include "vrllib/model/type_view.h"
#include "vrllib/model/view.h"
#include "vrllib/plugins/factory_loader.h"
#include "vrllib/plugins/load_report.h"
#include "vrllib/plugins/loader.h"
#include "vrllib/plugins/plugin.h"
#include "vrllib/serialisation/ascii_stream.h"
#include "vrllib/serialisation/binary_stream.h"
#include "vrllib/startup/block_specification.h"
#include "vrllib/startup/command_line.h"
#include "vrllib/startup/configuration.h"
#include "vrllib/startup/startup.h"

/// The spelling that generated source uses.
namespace vrl = Vorlane_v1_0;
