#include <algorithm>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "bench/model/device_tree.h"
#include "bench/model/machine.h"
#include "bench/model/source_file.h"
#include "bench/model/writers.h"

namespace {

void AddLabels(const std::vector<Operand>& operands, std::set<std::string>& labels) {
  for (const Operand& operand : operands) labels.insert(LabelOf(operand));
}

void AddLabels(const std::vector<Value>& values, std::set<std::string>& labels) {
  for (const Value& value : values) AddLabels(value.operands, labels);
}

}  // namespace

std::string Dashed(std::string name) {
  std::transform(name.begin(), name.end(), name.begin(), [](char c) {
    if (c == '_' || c == ' ' || c == '/') return '-';
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return name;
}

std::string LabelOf(const Operand& operand) {
  const std::string number = std::to_string(operand.number);
  if (operand.kind == Operand::kGlobal) return 'g' + number;
  if (operand.kind == Operand::kAction) return 'a' + number;
  return operand.kind == Operand::kTable ? 't' + number : "";
}

std::set<std::string> LabelsOf(const Machine& machine) {
  std::set<std::string> labels;
  AddLabels(machine.globals, labels);
  for (const Action& action : machine.actions) AddLabels(action.steps, labels);
  for (const Sensor& sensor : machine.sensors) AddLabels(sensor.values, labels);
  for (const Device& device : machine.devices) AddLabels(device.values, labels);
  for (const Repeater& repeater : machine.repeaters) {
    labels.insert(LabelOf({Operand::kAction, repeater.action}));
    AddLabels(repeater.arguments, labels);
  }
  return labels;
}

void WriteNames(const Machine& machine, const std::string& path) {
  std::vector<std::string> paths;
  for (const Group& group : machine.groups) {
    paths.push_back((group.parent == kRoot ? "" : paths[group.parent]) + '/' + Dashed(group.name));
  }
  std::ofstream out = CreateFile(path);
  for (const Sensor& sensor : machine.sensors) {
    out << sensor.id << '\t' << sensor.name << '\t' << paths[sensor.group] << '/'
        << Dashed(sensor.name) << '\n';
  }
  out.flush();
}
