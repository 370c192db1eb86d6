//! Prints what sensor_list.c prints. The numbers of the language come from `rux export rust`, as machine.rs.
mod machine;

use std::ffi::{CStr, CString};
use std::io::{self, Write};
use std::os::raw::{c_char, c_void};

/// What ruxmeta.h declares, as far as it is needed here.
mod ffi {
    use super::{c_char, c_void};

    #[repr(C)]
    pub struct Fault {
        pub size: usize,
        pub offset: u64,
        pub text: [c_char; 256],
    }

    #[repr(C)]
    #[derive(Clone, Copy)]
    pub struct Text {
        pub data: *const u8,
        pub size: usize,
    }

    #[repr(C)]
    pub struct Value {
        pub kind: u32,
        pub index: u32,
        pub number: u32,
        pub text: Text,
    }

    #[repr(C)]
    #[derive(Clone, Copy)]
    pub struct Handle {
        pub model: *const c_void,
        pub at: *const c_void,
    }

    pub const NUMBER: u32 = 1;

    #[link(name = "ruxmeta")]
    extern "C" {
        pub fn ruxmeta_open(path: *const c_char, model: *mut *mut c_void, fault: *mut Fault)
            -> i32;
        pub fn ruxmeta_close(model: *mut c_void);
        pub fn ruxmeta_section_count(model: *const c_void, kind: u32) -> usize;
        pub fn ruxmeta_section_at(model: *const c_void, kind: u32, ordinal: usize) -> Handle;
        pub fn ruxmeta_section_name(section: Handle) -> Text;
        pub fn ruxmeta_section_id(section: Handle) -> Value;
        pub fn ruxmeta_find_entry(section: Handle, identifier: u32) -> Handle;
        pub fn ruxmeta_entry_value(entry: Handle, n: usize) -> Value;
    }
}

/// An open model. What is read of it borrows it, so it cannot be closed before that is gone.
struct Model(*mut c_void);

impl Model {
    fn open(path: &str) -> Result<Model, String> {
        let path = CString::new(path).map_err(|error| error.to_string())?;
        let mut model = std::ptr::null_mut();
        let mut fault = ffi::Fault {
            size: std::mem::size_of::<ffi::Fault>(),
            offset: 0,
            text: [0; 256],
        };
        // SAFETY: all three pointers are valid, and the library ends the text with a zero byte.
        unsafe {
            match ffi::ruxmeta_open(path.as_ptr(), &mut model, &mut fault) {
                0 => Ok(Model(model)),
                _ => Err(CStr::from_ptr(fault.text.as_ptr())
                    .to_string_lossy()
                    .into_owned()),
            }
        }
    }

    fn sensors(&self) -> impl Iterator<Item = Sensor<'_>> {
        // SAFETY: the model is open for as long as it is borrowed.
        let count = unsafe { ffi::ruxmeta_section_count(self.0, machine::SECTION_SENSOR) };
        (0..count).map(move |i| Sensor {
            section: unsafe { ffi::ruxmeta_section_at(self.0, machine::SECTION_SENSOR, i) },
            model: std::marker::PhantomData,
        })
    }
}

impl Drop for Model {
    fn drop(&mut self) {
        // SAFETY: nothing borrows the model any more.
        unsafe { ffi::ruxmeta_close(self.0) }
    }
}

struct Sensor<'a> {
    section: ffi::Handle,
    model: std::marker::PhantomData<&'a Model>,
}

impl<'a> Sensor<'a> {
    /// Bytes: a name need not be UTF-8.
    fn name(&self) -> &'a [u8] {
        // SAFETY: the text belongs to the model, which is borrowed.
        unsafe {
            let text = ffi::ruxmeta_section_name(self.section);
            std::slice::from_raw_parts(text.data, text.size)
        }
    }

    fn id(&self) -> u32 {
        unsafe { ffi::ruxmeta_section_id(self.section).number }
    }

    fn number(&self, entry: u32) -> Option<u32> {
        // SAFETY: a section without that entry has no such value; every function takes that.
        let value =
            unsafe { ffi::ruxmeta_entry_value(ffi::ruxmeta_find_entry(self.section, entry), 0) };
        (value.kind == ffi::NUMBER).then_some(value.number)
    }
}

const LIMITS: [u32; 4] = [
    machine::ENTRY_THRESHOLD_FL,
    machine::ENTRY_THRESHOLD_WL,
    machine::ENTRY_THRESHOLD_WH,
    machine::ENTRY_THRESHOLD_FH,
];

fn print(model: &Model) -> io::Result<()> {
    let mut out = io::BufWriter::new(io::stdout().lock());
    writeln!(
        out,
        "NAME,ID,THRESHOLD_FL,THRESHOLD_WL,THRESHOLD_WH,THRESHOLD_FH"
    )?;
    for sensor in model.sensors() {
        out.write_all(sensor.name())?;
        write!(out, ",0x{:X}", sensor.id())?;
        for limit in LIMITS {
            let number = sensor
                .number(limit)
                .map_or(String::new(), |number| number.to_string());
            write!(out, ",{number}")?;
        }
        writeln!(out)?;
    }
    out.flush()
}

fn main() {
    let path = std::env::args().nth(1).unwrap_or_else(|| {
        eprintln!("usage: sensor_list META");
        std::process::exit(2)
    });
    let done =
        Model::open(&path).and_then(|model| print(&model).map_err(|error| error.to_string()));
    if let Err(error) = done {
        eprintln!("{path}: {error}");
        std::process::exit(1);
    }
}
