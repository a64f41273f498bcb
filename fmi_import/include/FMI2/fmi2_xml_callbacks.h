/** @file
 * Handlers for vendor annotations in a model description (FMI 2.0 section 2.2.6).
 */
#ifndef FMI2_XML_CALLBACKS_H_
#define FMI2_XML_CALLBACKS_H_

#ifdef __cplusplus
extern "C" {
#endif

typedef int (*fmi2_xml_element_start_handle_ft)(void* context, const char* toolName, void* parent,
                                                const char* elm, const char** attr);
typedef int (*fmi2_xml_element_data_handle_ft)(void* context, const char* s, int len);
typedef int (*fmi2_xml_element_end_handle_ft)(void* context, const char* elm);

/** Handlers for the elements inside a `Tool` element. */
typedef struct fmi2_xml_callbacks_t {
    fmi2_xml_element_start_handle_ft startHandle;
    fmi2_xml_element_data_handle_ft dataHandle;
    fmi2_xml_element_end_handle_ft endHandle;
    void* context;
} fmi2_xml_callbacks_t;

#ifdef __cplusplus
}
#endif

#endif
