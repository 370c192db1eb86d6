// Prints what sensor_list.c prints.
package main

// #cgo LDFLAGS: -lruxmeta
// #include <ruxmeta.h>
// #include <stdlib.h>
import "C"

import (
	"bufio"
	"errors"
	"fmt"
	"os"
	"unsafe"
)

// Model is an open meta file. What is read of it is valid until it is closed.
type Model struct {
	model *C.ruxmeta_model
}

// Open verifies the file and opens it.
func Open(path string) (*Model, error) {
	name := C.CString(path)
	defer C.free(unsafe.Pointer(name))
	model := &Model{}
	fault := C.ruxmeta_fault{size: C.sizeof_ruxmeta_fault}
	if C.ruxmeta_open(name, &model.model, &fault) != C.RUXMETA_OK {
		return nil, errors.New(C.GoString(&fault.text[0]))
	}
	return model, nil
}

// Close releases the model.
func (model *Model) Close() {
	C.ruxmeta_close(model.model)
}

// Sensors has them in the order of the script.
func (model *Model) Sensors() []Sensor {
	sensors := make([]Sensor, C.ruxmeta_section_count(model.model, C.RUXMETA_SECTION_SENSOR))
	for i := range sensors {
		sensors[i].section = C.ruxmeta_section_at(model.model, C.RUXMETA_SECTION_SENSOR, C.size_t(i))
	}
	return sensors
}

// Sensor is a section of an open model.
type Sensor struct {
	section C.ruxmeta_section
}

// Name copies the text, whose bytes need not be UTF-8.
func (sensor Sensor) Name() string {
	text := C.ruxmeta_section_name(sensor.section)
	return C.GoStringN(text.data, C.int(text.size))
}

// ID returns the number that other sections refer to.
func (sensor Sensor) ID() uint32 {
	return uint32(C.ruxmeta_section_id(sensor.section).number)
}

// Number returns that of an entry, and whether the sensor has one.
func (sensor Sensor) Number(entry uint32) (uint32, bool) {
	value := C.ruxmeta_entry_value(C.ruxmeta_find_entry(sensor.section, C.uint32_t(entry)), 0)
	return uint32(value.number), value.kind == C.RUXMETA_NUMBER
}

var limits = []uint32{C.RUXMETA_ENTRY_THRESHOLD_FL, C.RUXMETA_ENTRY_THRESHOLD_WL,
	C.RUXMETA_ENTRY_THRESHOLD_WH, C.RUXMETA_ENTRY_THRESHOLD_FH}

func print(model *Model) error {
	out := bufio.NewWriter(os.Stdout)
	fmt.Fprintln(out, "NAME,ID,THRESHOLD_FL,THRESHOLD_WL,THRESHOLD_WH,THRESHOLD_FH")
	for _, sensor := range model.Sensors() {
		fmt.Fprintf(out, "%s,0x%X", sensor.Name(), sensor.ID())
		for _, limit := range limits {
			fmt.Fprint(out, ",")
			if number, exists := sensor.Number(limit); exists {
				fmt.Fprint(out, number)
			}
		}
		fmt.Fprintln(out)
	}
	return out.Flush()
}

func main() {
	if len(os.Args) != 2 {
		fmt.Fprintln(os.Stderr, "usage: sensor_list META")
		os.Exit(2)
	}
	model, err := Open(os.Args[1])
	if err == nil {
		defer model.Close()
		err = print(model)
	}
	if err != nil {
		fmt.Fprintf(os.Stderr, "%s: %v\n", os.Args[1], err)
		os.Exit(1)
	}
}
