// SPDX-License-Identifier: MIT
#include "cli/commands/FileCommandLine.h"

#include "cli/commands/CommonOptions.h"
#include "cli/terminal/Errors.h"
#include "model/Graph.h"

using namespace model;

namespace modrift::cli {
namespace {

constexpr const char* kPointsFooter =
    "\nPoints are x, y and the curve of the line to the next point, 0 to 1 each: x is the part of the cycle, from 0 "
    "in\n"
    "the first point to 1 in the last; y is 0 at the bottom and 1 at the top; a curve of 0.5, or none, is straight.\n"
    "Two points with the same x make a step. A graph has 2 to 64 points.\n"
    "\nExamples:\n"
    "  modrift shape save -o duck.shp --points \"0 0 0.3; 0.6 1; 1 1\"\n"
    "  modrift shape save -o gate.shp --points \"0 1; 0.5 1; 0.5 0; 1 0\"\n"
    "  modrift shape save -o taken.shp --from duck.fxp --graph 1";

CLI::Option* addGraph(CLI::App& command, std::optional<int>& graph, const char* description) {
  return command.add_option("--graph", graph, description)->type_name("1-12")->check(wholeNumberWithin(1, kGraphs));
}

void addFile(CLI::App& command, const std::string& name, std::string& file, const char* description) {
  command.add_option(name, file, description)->required()->type_name("");
}

void addPresetShow(CLI::App& preset, PresetShowOptions& options) {
  CLI::App* show = preset.add_subcommand("show", "Tell what a preset file holds, of any version");
  show->footer("\nExamples:\n  modrift preset show duck.fxp\n  modrift preset show duck.fxp --json");
  addFile(*show, "FILE", options.input, "A preset file");
  show->add_flag("--json", options.json, "All of it, exactly, as JSON");
}

void addPresetSave(CLI::App& preset, PresetSaveOptions& options) {
  CLI::App* save = preset.add_subcommand("save", "Make a preset file, as the plug-in itself stores it");
  save->footer(
      "\nThe order is: preset, shapes, --set. 'modrift info' lists the parameters.\n"
      "\nExamples:\n"
      "  modrift preset save -o duck.fxp --set \">vol=1\" --set Rate=0.43 --shape 1=duck.shp\n"
      "  modrift preset save -o softer.fxp --preset duck.fxp --set \">vol=0.7\"");
  save->add_option("-o,--output", options.output, "The preset file")->required()->type_name("FILE.fxp");
  save->add_option("--plugin", options.plugin, "Another Modrift: a shared object or a bundle folder")
      ->type_name("FILE");
  addState(*save, options.preset, options.shapes, options.settings);
}

void addPresetConvert(CLI::App& preset, PresetConvertOptions& options) {
  CLI::App* convert = preset.add_subcommand("convert", "Bring a preset file to the present version and layout");
  convert->footer(
      "\nNEW may be OLD: the old file stays until the new one is whole.\n"
      "\nExample:\n  modrift preset convert old.fxp new.fxp");
  addFile(*convert, "OLD", options.input, "A preset file of any version");
  addFile(*convert, "NEW", options.output, "The preset file to write");
}

void addShapeShow(CLI::App& shape, ShapeShowOptions& options) {
  CLI::App* show = shape.add_subcommand("show", "Tell a shape file's points");
  show->footer("\nExamples:\n  modrift shape show duck.shp\n  modrift shape show duck.shp --json");
  addFile(*show, "FILE", options.input, "A shape file");
  show->add_flag("--json", options.json, "The same, exactly, as JSON");
}

void addShapeSave(CLI::App& shape, ShapeSaveOptions& options) {
  CLI::App* save = shape.add_subcommand("save", "Make a shape file from points or from a preset's graph");
  save->footer(kPointsFooter);
  save->add_option("-o,--output", options.output, "The shape file")->required()->type_name("FILE.shp");
  save->add_option("--points", options.points, "The points, see below")->type_name("\"X Y [CURVE]; ...\"");
  save->add_option("--from", options.preset, "A preset file to take a graph from")->type_name("FILE.fxp");
  addGraph(*save, options.graph, "The graph to take");
}

void addShapePlot(CLI::App& shape, ShapePlotOptions& options) {
  CLI::App* plot = shape.add_subcommand("plot", "Draw a shape file, or a preset's graph, as a picture");
  plot->footer(
      "\nExamples:\n  modrift shape plot duck.shp -o duck.png\n  modrift shape plot duck.fxp --graph 2 -o graph2.png");
  addFile(*plot, "FILE", options.input, "A shape file, or with --graph a preset file");
  plot->add_option("-o,--output", options.output, "The picture, or a folder ending in /")
      ->required()
      ->type_name("PICTURE.png");
  addGraph(*plot, options.graph, "The graph of a preset file");
}

}  // namespace

void addFileCommands(CLI::App& app, FileOptions& options) {
  CLI::App* preset = app.add_subcommand("preset", "Show, make and convert preset files");
  preset->footer("\n'modrift preset COMMAND --help' tells more.");
  preset->require_subcommand(0, 1);
  addPresetShow(*preset, options.presetShow);
  addPresetSave(*preset, options.presetSave);
  addPresetConvert(*preset, options.presetConvert);
  CLI::App* shape = app.add_subcommand("shape", "Show, make and draw shape files");
  shape->footer("\n'modrift shape COMMAND --help' tells more.");
  shape->require_subcommand(0, 1);
  addShapeShow(*shape, options.shapeShow);
  addShapeSave(*shape, options.shapeSave);
  addShapePlot(*shape, options.shapePlot);
}

void runFileCommand(const CLI::App& app, const FileOptions& options) {
  if (app.got_subcommand("preset")) {
    const CLI::App* preset = app.get_subcommand("preset");
    if (preset->get_subcommands().empty()) {
      throw UsageError("preset: show, save or convert was expected (see modrift preset --help)");
    }
    if (preset->got_subcommand("show")) runPresetShow(options.presetShow);
    if (preset->got_subcommand("save")) runPresetSave(options.presetSave);
    if (preset->got_subcommand("convert")) runPresetConvert(options.presetConvert);
  }
  if (app.got_subcommand("shape")) {
    const CLI::App* shape = app.get_subcommand("shape");
    if (shape->get_subcommands().empty()) {
      throw UsageError("shape: show, save or plot was expected (see modrift shape --help)");
    }
    if (shape->got_subcommand("show")) runShapeShow(options.shapeShow);
    if (shape->got_subcommand("save")) runShapeSave(options.shapeSave);
    if (shape->got_subcommand("plot")) runShapePlot(options.shapePlot);
  }
}

}  // namespace modrift::cli
