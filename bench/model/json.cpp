#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <numeric>
#include <string>
#include <vector>

#include "bench/model/machine.h"
#include "bench/model/source_file.h"
#include "bench/model/writers.h"

namespace {

class JsonWriter {
 public:
  JsonWriter(const Machine& machine, const std::string& path)
      : machine_(machine), out_(CreateFile(path)) {}

  void Write() {
    for (const std::string& comment : machine_.comments) Comment(comment);
    out_ << "{\"model\": \"" << machine_.model << "\", \"type\": 2, \"flag\": 0, \"loop_ms\": 1000";
    List("system_properties", machine_.system_properties);
    List("groups", machine_.groups);
    List("sensors", machine_.sensors);
    SensorNames();
    List("devices", machine_.devices);
    List("actions", machine_.actions);
    List("tables", machine_.tables);
    List("globals", machine_.globals);
    List("properties", machine_.properties);
    List("repeaters", machine_.repeaters);
    List("events", machine_.events);
    out_ << "}\n";
    out_.flush();
  }

 private:
  void Element(const Group& group) {
    Name(group.name);
    if (group.parent != kRoot) Number("parent", group.parent);
    Number("children", group.children);
  }

  void Element(const Sensor& sensor) {
    if (!sensor.comment.empty()) Comment(sensor.comment);
    Name(sensor.name);
    Number("id", sensor.id);
    Number("group", sensor.group);
    Number("type", sensor.type);
    Number("init_flag", sensor.init_flag);
    Number("control_mask", sensor.control_mask);
    for (const Threshold& threshold : sensor.thresholds) {
      std::string name = "threshold_" + threshold.name;
      std::transform(name.begin(), name.end(), name.begin(),
                     [](char c) { return c < 'A' || c > 'Z' ? c : static_cast<char>(c + 32); });
      out_ << ", \"" << name << "\": " << threshold.limit;
      if (!threshold.comment.empty()) Comment(threshold.comment);
    }
    List("properties", sensor.properties);
    List("values", sensor.values);
  }

  void Element(const Device& device) {
    Name(device.name);
    Number("id", device.id);
    Number("init_flag", device.init_flag);
    Number("control_mask", device.control_mask);
    List("properties", device.properties);
    List("values", device.values);
  }

  void Element(const Action& action) {
    Name(action.name);
    Number("arguments", action.arguments);
    List("steps", action.steps);
  }

  void Element(const Table& table) {
    Name(table.name);
    Number("type", table.type);
    List("rows", table.rows);
  }

  void Element(const Table::Row& row) {
    out_ << "\"first\": " << row.first << ", \"last\": " << row.last << ", \"cell\": " << row.cell;
  }

  void Element(const Value& value) {
    Name(value.name);
    Number("type", static_cast<std::uint32_t>(value.type));
    List("operands", value.operands);
  }

  void Element(const Operand& operand) {
    out_ << "\"kind\": " << operand.kind << ", \"number\": " << operand.number;
  }

  void Element(const Property& property) {
    Name(property.name);
    out_ << ", \"text\": \"" << property.text << '"';
  }

  void Element(const Repeater& repeater) {
    Name(repeater.name);
    Number("count", repeater.count);
    Number("action", repeater.action);
    List("arguments", repeater.arguments);
  }

  void Element(const EventList& events) {
    Name(events.name);
    out_ << ", \"id\": " << &events - machine_.events.data() + 1;
    Number("parent_id", events.parent);
    out_ << ", \"sensors\": [";
    std::size_t count = 0;
    for (const std::uint32_t sensor : events.sensors) {
      if (count) out_ << (count % 12 ? ", " : ",\n");
      out_ << sensor;
      ++count;
    }
    out_ << ']';
  }

  void SensorNames() {
    std::vector<std::uint32_t> order(machine_.sensors.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
      return machine_.sensors[a].name < machine_.sensors[b].name;
    });
    out_ << ",\n\"sensor_names\": [";
    const char* separator = "\n";
    for (const std::uint32_t sensor : order) {
      out_ << separator << '{';
      Name(machine_.sensors[sensor].name);
      Number("sensor", sensor);
      out_ << '}';
      separator = ",\n";
    }
    out_ << ']';
  }

  template <typename Item>
  void List(const char* name, const std::vector<Item>& elements) {
    out_ << ",\n\"" << name << "\": [";
    const char* separator = "";
    for (const Item& element : elements) {
      out_ << separator << '{';
      Element(element);
      out_ << '}';
      separator = ",\n";
    }
    out_ << ']';
  }

  // Up to the end of the line.
  void Comment(const std::string& text) { out_ << " // " << text << '\n'; }

  void Name(const std::string& name) { out_ << "\"name\": \"" << name << '"'; }
  void Number(const char* name, std::uint32_t number) {
    out_ << ", \"" << name << "\": " << number;
  }

  const Machine& machine_;
  std::ofstream out_;
};

}  // namespace

void WriteJson(const Machine& machine, const std::string& path) {
  JsonWriter(machine, path).Write();
}
