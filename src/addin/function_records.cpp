#include "addin/function_records.h"

namespace metrify {

constinit XlFunctionRecord metrify_record{
    .narrow = {.entry = "Metrify_4", .type = "RBCC"},
    .wide = {.entry = "Metrify_12",
             .type = "UBC%C%$",
             .argumentNames = u"Val,InUnits,OutUnits",
             .category = u"Metrify",
             .description = u"Converts Val from InUnits to OutUnits",
             .argumentHelp = u"Input value expressed in InUnits to be converted to Outunits (number)\0"
                             u"Units of the input value (text)\0"
                             u"Units to convert input value to (text)\0"},
    .functionName = u"Metrify",
    .macroType = 1,
    .signature =
        u"{Metrify,,,Converts Val from InUnits to OutUnits,Metrify,1,1,U,"
        u"{{0,{Val,Double,0,,Input value expressed in InUnits to be converted to Outunits (number),,,,}},"
        u"{0,{InUnits,String,0,,Units of the input value (text),,,,}},"
        u"{0,{OutUnits,String,0,,Units to convert input value to (text),,,,}}},{},3,,0,0,,,,0,0}",
};

constinit XlFunctionRecord macro_record{
    .narrow = {.entry = "Metrify_Macro_4", .type = "R"},
    .wide = {.entry = "Metrify_Macro_12",
             .type = "U$",
             .category = u"14",
             .description = u"Calls the Metrify() function."},
    .functionName = u"Metrify_Macro",
    .macroType = 2,
    .signature = u"{Metrify_Macro,,,Calls the Metrify() function.,14,2,1,U,{},{},3,,0,0,,,,0,0}",
};

constinit XlFunctionRecord ribbon_record{
    .narrow = {.entry = "RibbonCallback_4", .type = "RJCCJCCA"},
    .wide = {.entry = "RibbonCallback_12",
             .type = "UJC%C%JC%C%A",
             .argumentNames = u"callback,id,tag,index,text,selectedId,pressed",
             .category = u"14",
             .description = u"Handles all calls redirected from the ribbonX manager",
             .argumentHelp = u"is the identifier of the callback which invoked this function\0"
                             u"is the id attribute of the control raising the event\0"
                             u"is the tag attribute of the control raising the event\0"
                             u"is the index of an item\0"
                             u"is the changed value of the text\0"
                             u"is the id of the selected item\0"
                             u"is true if the toggleButton is pressed\0"},
    .functionName = u"RibbonCallback",
    .macroType = 2,
    .helpId = 4,
    .signature = u"{RibbonCallback,,,Handles all calls redirected from the ribbonX manager,14,2,0,U,"
                 u"{{0,{callback,Int,0,,is the identifier of the callback which invoked this function,,,,}},"
                 u"{0,{id,String,0,,is the id attribute of the control raising the event,,,,}},"
                 u"{0,{tag,String,0,,is the tag attribute of the control raising the event,,,,}},"
                 u"{0,{index,Int,0,,is the index of an item,,,,}},"
                 u"{0,{text,String,0,,is the changed value of the text,,,,}},"
                 u"{0,{selectedId,String,0,,is the id of the selected item,,,,}},"
                 u"{0,{pressed,Boolean,0,,is true if the toggleButton is pressed,,,,}}},{},3,,0,0,,,,0,0}",
};

} // namespace metrify
