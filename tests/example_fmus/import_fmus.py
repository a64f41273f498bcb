#!/usr/bin/env python3
"""A second importer of FMI 2.0 for co-simulation, as strict as importers get: it checks each FMU's
model description against the rules of the standard, binds every function before it calls one, and
runs the FMU.

    import_fmus.py FMU...
"""
import ctypes as c
import re
import sys
import tempfile
import xml.etree.ElementTree as xml
import zipfile
from pathlib import Path

REAL, INTEGER, STRING, REFERENCE, SIZE, HANDLE = (
    c.c_double, c.c_int, c.c_char_p, c.c_uint, c.c_size_t, c.c_void_p)
ANY = c.c_void_p  # a pointer to an array or to a value
ARRAY = [HANDLE, ANY, SIZE, ANY]
DERIVATIVES = [HANDLE, ANY, SIZE, ANY, ANY]
STATUS = [HANDLE, INTEGER, ANY]

# Name without "fmi2": arguments; every function of FMI 2.0 that a slave for co-simulation has.
FUNCTIONS = {
    "GetTypesPlatform": [], "GetVersion": [],
    "SetDebugLogging": [HANDLE, INTEGER, SIZE, ANY],
    "Instantiate": [STRING, INTEGER, STRING, STRING, ANY, INTEGER, INTEGER],
    "FreeInstance": [HANDLE],
    "SetupExperiment": [HANDLE, INTEGER, REAL, REAL, INTEGER, REAL],
    "EnterInitializationMode": [HANDLE], "ExitInitializationMode": [HANDLE],
    "Terminate": [HANDLE], "Reset": [HANDLE],
    "GetReal": ARRAY, "GetInteger": ARRAY, "GetBoolean": ARRAY, "GetString": ARRAY,
    "SetReal": ARRAY, "SetInteger": ARRAY, "SetBoolean": ARRAY, "SetString": ARRAY,
    "GetFMUstate": [HANDLE, ANY], "SetFMUstate": [HANDLE, HANDLE], "FreeFMUstate": [HANDLE, ANY],
    "SerializedFMUstateSize": [HANDLE, HANDLE, ANY],
    "SerializeFMUstate": [HANDLE, HANDLE, ANY, SIZE],
    "DeSerializeFMUstate": [HANDLE, ANY, SIZE, ANY],
    "GetDirectionalDerivative": [HANDLE, ANY, SIZE, ANY, SIZE, ANY, ANY],
    "SetRealInputDerivatives": DERIVATIVES, "GetRealOutputDerivatives": DERIVATIVES,
    "DoStep": [HANDLE, REAL, REAL, INTEGER], "CancelStep": [HANDLE],
    "GetStatus": STATUS, "GetRealStatus": STATUS, "GetIntegerStatus": STATUS,
    "GetBooleanStatus": STATUS, "GetStringStatus": STATUS,
}
OTHER_RESULTS = {"GetTypesPlatform": STRING, "GetVersion": STRING, "Instantiate": HANDLE,
                 "FreeInstance": None}
OK, DISCARD, ERROR = 0, 2, 3

LOGGER = c.CFUNCTYPE(None, HANDLE, STRING, INTEGER, STRING, STRING, STRING)
messages = []


class Callbacks(c.Structure):
    _fields_ = [("logger", LOGGER), ("allocateMemory", HANDLE), ("freeMemory", HANDLE),
                ("stepFinished", HANDLE), ("componentEnvironment", HANDLE)]


CALLBACKS = Callbacks(LOGGER(
    lambda environment, name, status, category, format, text: messages.append(text.decode())))

ORDER = ["ModelExchange", "CoSimulation", "UnitDefinitions", "TypeDefinitions", "LogCategories",
         "DefaultExperiment", "VendorAnnotations", "ModelVariables", "ModelStructure"]
# Allowed pairs, each with the default of `initial` (section 2.2.7).
INITIAL = {
    ("parameter", "fixed"): "exact", ("parameter", "tunable"): "exact",
    ("calculatedParameter", "fixed"): "calculated", ("calculatedParameter", "tunable"): "calculated",
    ("input", "discrete"): None, ("input", "continuous"): None,
    ("output", "constant"): "exact", ("output", "discrete"): "calculated",
    ("output", "continuous"): "calculated",
    ("local", "constant"): "exact", ("local", "fixed"): "calculated",
    ("local", "tunable"): "calculated", ("local", "discrete"): "calculated",
    ("local", "continuous"): "calculated", ("independent", "continuous"): None,
}
STRUCTURED_NAME = re.compile(r"[A-Za-z_]\w*(\.[A-Za-z_]\w*)*(\[\d+(,\d+)*\])?", re.ASCII)
BASE_UNITS = {"kg", "m", "s", "A", "K", "mol", "cd", "rad", "factor", "offset"}


def require(condition, *problem):
    if not condition:
        raise AssertionError(" ".join(map(str, problem)))


def check_units(model):
    names = [unit.get("name") for unit in model.iterfind("UnitDefinitions/Unit")]
    require(len(names) == len(set(names)), "unit defined twice")
    for base in model.iterfind("UnitDefinitions/Unit/BaseUnit"):
        require(set(base.keys()) <= BASE_UNITS, "unknown base unit", base.attrib)
    for element in model.iter():
        unit = element.get("unit")
        require(unit is None or unit in names, "undefined unit", unit)
    return names


def initial_of(variable):
    return variable.get("initial", INITIAL[variable.get("causality"), variable.get("variability")])


def check_variable(variable, types):
    name, value = variable.get("name"), variable[0]
    kind = variable.get("causality"), variable.get("variability")
    require(STRUCTURED_NAME.fullmatch(name), name, "is no structured name")
    require(kind in INITIAL, name, "is", *kind)
    require(kind[1] != "continuous" or value.tag == "Real", name, "is no continuous Real")
    required = kind[0] == "input" or initial_of(variable) in ("exact", "approx")
    require((value.get("start") is not None) == required, name, "has or lacks its start value")
    declared = value.get("declaredType")
    require(declared in types if declared else value.tag != "Enumeration", name, declared)
    if value.tag in ("Real", "Integer"):
        bounds = [float(value.get(key)) for key in ("min", "start", "max") if value.get(key)]
        require(bounds == sorted(bounds), name, "starts beyond its bounds")


def check_structure(model, variables):
    def listed(group):
        return [int(unknown.get("index")) for unknown in model.iterfind(f"ModelStructure/{group}/Unknown")]

    def indices(condition):
        return [i for i, variable in enumerate(variables, 1) if condition(variable)]

    require(listed("Outputs") == indices(lambda v: v.get("causality") == "output"), "Outputs")
    require(listed("InitialUnknowns") == indices(
        lambda v: v.get("causality") in ("output", "calculatedParameter")
        and initial_of(v) in ("approx", "calculated")), "InitialUnknowns")


def check_description(model):
    require(model.tag == "fmiModelDescription" and model.get("fmiVersion") == "2.0", "no FMI 2.0")
    require(all(model.get(key) for key in ("modelName", "guid")), "name or GUID missing")
    tags = [child.tag for child in model]
    require(tags == sorted(set(tags), key=ORDER.index), "elements out of order", tags)
    require(model.find("ModelStructure") is not None, "no ModelStructure")
    check_units(model)
    types = [t.get("name") for t in model.iterfind("TypeDefinitions/SimpleType")]
    variables = list(model.find("ModelVariables"))
    names = [variable.get("name") for variable in variables]
    require(len(names) == len(set(names)), "variable name used twice")
    for variable in variables:
        check_variable(variable, types)
    check_structure(model, variables)
    return variables


def bind(binary):
    library = c.CDLL(str(binary))
    functions = {}
    for name, arguments in FUNCTIONS.items():
        functions[name] = getattr(library, "fmi2" + name)  # an AttributeError names what is missing
        functions[name].argtypes = arguments
        functions[name].restype = OTHER_RESULTS.get(name, INTEGER)
    return functions


class Slave:
    def __init__(self, functions, model, resources):
        self.functions = functions
        self.handle = functions["Instantiate"](
            b"slave", 1, model.get("guid").encode(), resources.as_uri().encode(),
            c.byref(CALLBACKS), 0, 0)
        require(self.handle, "not instantiated:", messages)

    def call(self, name, *arguments, expected=OK):
        status = self.functions[name](self.handle, *arguments)
        require(status == expected, name, "answers", status, messages[-1:])

    def real(self, reference):
        value = REAL()
        self.call("GetReal", c.byref(REFERENCE(reference)), 1, c.byref(value))
        return value.value

    def step(self, first, last):
        for n in range(first, last):
            self.call("DoStep", n * 1e-3, 1e-3, 1)


def read_starts(slave, variables):
    """Every start value of a number is what the FMU itself starts with."""
    for variable in variables:
        value, reference = variable[0], c.byref(REFERENCE(int(variable.get("valueReference"))))
        if value.get("start") is None or value.tag not in ("Real", "Integer"):
            continue
        actual = REAL() if value.tag == "Real" else INTEGER()
        slave.call("Get" + value.tag, reference, 1, c.byref(actual))
        require(actual.value == float(value.get("start")), variable.get("name"), actual.value)


def use_states(slave, offered, reference):
    state, size = HANDLE(), SIZE()
    if not offered:
        slave.call("GetFMUstate", c.byref(state), expected=ERROR)
        return
    slave.call("GetFMUstate", c.byref(state))
    slave.call("SerializedFMUstateSize", state, c.byref(size))
    data = c.create_string_buffer(size.value)
    slave.call("SerializeFMUstate", state, data, size)
    slave.step(100, 150)
    after = slave.real(reference)
    slave.call("FreeFMUstate", c.byref(state))
    slave.call("DeSerializeFMUstate", data, size, c.byref(state))
    slave.call("SetFMUstate", state)
    slave.step(100, 150)
    require(slave.real(reference) == after, "a restored state led elsewhere")
    slave.call("FreeFMUstate", c.byref(state))
    require(not state, "a freed state has a handle")


def refuse_what_is_not_offered(slave, reference):
    one, number = c.byref(REFERENCE(reference)), c.byref(REAL())
    for name, arguments in (("GetDirectionalDerivative", (one, 1, one, 1, number, number)),
                            ("SetRealInputDerivatives", (one, 1, c.byref(INTEGER(1)), number)),
                            ("GetRealOutputDerivatives", (one, 1, c.byref(INTEGER(1)), number))):
        slave.call(name, *arguments, expected=ERROR)
        require(messages[-1].startswith(f"fmi2{name} is not offered"), messages[-1])
    slave.call("CancelStep", expected=ERROR if not slave.scripted else OK)
    for kind, value in (("", INTEGER()), ("Real", REAL()), ("Integer", INTEGER()),
                        ("Boolean", INTEGER()), ("String", STRING())):
        slave.call(f"Get{kind}Status", 0, c.byref(value), expected=DISCARD)


def run(slave, model, variables):
    output = next(v for v in variables if v.get("causality") == "output" and v[0].tag == "Real")
    reference = int(output.get("valueReference"))
    read_starts(slave, variables)
    slave.call("SetDebugLogging", 0, 0, None)
    slave.call("SetupExperiment", 0, 0.0, 0.0, 0, 0.0)
    slave.call("EnterInitializationMode")
    slave.call("ExitInitializationMode")
    slave.step(0, 100)
    use_states(slave, model.find("CoSimulation").get("canGetAndSetFMUstate") == "true", reference)
    refuse_what_is_not_offered(slave, reference)
    slave.call("Terminate")
    slave.call("Reset")
    read_starts(slave, variables)
    slave.functions["FreeInstance"](slave.handle)


def import_fmu(path):
    with tempfile.TemporaryDirectory() as folder, zipfile.ZipFile(path) as archive:
        archive.extractall(folder)
        model = xml.parse(Path(folder, "modelDescription.xml")).getroot()
        variables = check_description(model)
        identifier = model.find("CoSimulation").get("modelIdentifier")
        functions = bind(Path(folder, "binaries", "linux64", identifier + ".so"))
        require(functions["GetVersion"]() == b"2.0", "version")
        require(functions["GetTypesPlatform"]() == b"default", "types platform")
        slave = Slave(functions, model, Path(folder, "resources"))
        slave.scripted = identifier == "scripted"
        run(slave, model, variables)
    print(f"{path}: {len(FUNCTIONS)} functions, {len(variables)} variables")


for fmu in sys.argv[1:]:
    import_fmu(fmu)
