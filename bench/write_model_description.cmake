# cmake -DFILE=... -DIDENTIFIER=... -DGUID=... -DINPUTS=n -DOUTPUTS=n -DPARAMETERS=n -DLOCALS=n
#       -DVECTORS=<bool> -P write_model_description.cmake
#
# Writes the model description of a workload, its variables in the order of their value references:
# parameters, inputs, outputs, locals. Names, units and texts are as long as those of real FMUs.

set(units N m m/s rad rad/s Pa K J)
list(LENGTH units unit_count)
set(reference 0)
set(text "")

# Written in pieces: appending to one long text would copy all of it each time.
macro(flush)
  file(APPEND "${FILE}" "${text}")
  set(text "")
endmacro()

# add_variables(<count> <name> ...): `number` in the name counts from 1.
function(add_variables count name attributes start description)
  if(count EQUAL 0)
    return()
  endif()
  foreach(number RANGE 1 ${count})
    math(EXPR element "(${number} - 1) % 3 + 1")
    math(EXPR vector "(${number} - 1) / 3 + 1")
    math(EXPR unit_index "${reference} % ${unit_count}")
    list(GET units ${unit_index} unit)
    string(CONFIGURE "${name}" full_name @ONLY)
    string(APPEND text
      "    <ScalarVariable name=\"${full_name}\" valueReference=\"${reference}\" ${attributes}\n"
      "      description=\"${description} ${number}\">\n      <Real unit=\"${unit}\"${start}/>\n"
      "    </ScalarVariable>\n")
    math(EXPR reference "${reference} + 1")
    if(unit_index EQUAL 0)
      flush()
    endif()
  endforeach()
  flush()
  set(reference ${reference} PARENT_SCOPE)
endfunction()

file(WRITE "${FILE}" "<?xml version=\"1.0\" encoding=\"UTF-8\"?>
<fmiModelDescription fmiVersion=\"2.0\" modelName=\"${IDENTIFIER}\" guid=\"${GUID}\"
    description=\"A workload to measure with\" variableNamingConvention=\"structured\">
  <CoSimulation modelIdentifier=\"${IDENTIFIER}\" canHandleVariableCommunicationStepSize=\"true\"/>
  <UnitDefinitions>\n")
foreach(unit IN LISTS units)
  string(APPEND text "    <Unit name=\"${unit}\"/>\n")
endforeach()
string(APPEND text "  </UnitDefinitions>
  <DefaultExperiment startTime=\"0\" stopTime=\"16\" stepSize=\"0.001\"/>
  <ModelVariables>\n")
flush()

set(coupled "@number@")
if(VECTORS) # The eleventh is then "rim.state4[2]".
  set(coupled "@vector@[@element@]")
endif()
set(continuous "variability=\"continuous\"")
add_variables(${PARAMETERS} "axle.bushing@number@.stiffness"
              "causality=\"parameter\" variability=\"tunable\"" " start=\"0\"" "Stiffness of the bushing")
add_variables(${INPUTS} "rim.state${coupled}" "causality=\"input\" ${continuous}"
              " start=\"0\"" "What is imposed on the rim, quantity")
set(outputs_begin ${reference})
add_variables(${OUTPUTS} "contact.load${coupled}"
              "causality=\"output\" ${continuous} initial=\"calculated\"" ""
              "What the contact patch answers with, quantity")
set(outputs_end ${reference})
add_variables(${LOCALS} "belt.element@number@.principalStress"
              "causality=\"local\" ${continuous} initial=\"calculated\"" ""
              "First principal stress at the node of the belt's element")

string(APPEND text "  </ModelVariables>\n  <ModelStructure>\n    <Outputs>\n")
math(EXPR first "${outputs_begin} + 1") # The index counts from 1.
foreach(index RANGE ${first} ${outputs_end})
  string(APPEND text "      <Unknown index=\"${index}\"/>\n")
endforeach()
string(APPEND text "    </Outputs>\n  </ModelStructure>\n</fmiModelDescription>\n")
flush()
