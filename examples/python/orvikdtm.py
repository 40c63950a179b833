"""The flat interface of OrvikDTMAlgorithm for Python: the records, and the functions with their types.

Standard library only. The shared library is found by the environment variable ORVIKDTM_LIBRARY, else where the system
looks for libraries.
"""

import ctypes
import ctypes.util
import os
from ctypes import POINTER, c_bool, c_char, c_char_p, c_double, c_int, c_int32, c_uint, c_void_p


def record(name, *fields):
    return type(name, (ctypes.Structure,), {"_fields_": list(fields)})


def doubles(*names):
    return [(name, c_double) for name in names]


NAME = c_char * 24
SurfacePoint = record("SurfacePoint", ("surfaceName", NAME), ("pointName", NAME), *doubles("n", "e", "z"))
RangePoint = record("RangePoint", ("name", NAME), *doubles("n", "e", "z"))
DrawLine = record("DrawLine", *doubles("startX", "startY", "endX", "endY"), ("flag", c_int32))
FillCutResult = record(
    "FillCutResult",
    *doubles("fillPerimeterTwoD", "fillPerimeterThreeD", "cutPerimeterTwoD", "cutPerimeterThreeD", "fillTwoDArea",
             "fillThreeDArea", "cutTwoDArea", "cutThreeDArea", "fillVolume", "cutVolume"),
    ("surfaceName", NAME),
    *doubles("twoDArea", "threeDArea", "perimeterTwoD", "perimeterThreeD"),
    ("refSurfaceName", NAME))

# Keep a reference to every callback that is registered: the library does not.
DrawLineCallback = ctypes.CFUNCTYPE(None, POINTER(DrawLine))
SurfacePointCallback = ctypes.CFUNCTYPE(None, POINTER(SurfacePoint))
SurfaceCallback = ctypes.CFUNCTYPE(None, c_void_p)
RangePointCallback = ctypes.CFUNCTYPE(None, POINTER(RangePoint))

POINT = (c_char_p, c_double, c_double, c_double)  # name, n, e, z
FUNCTIONS = {
    "libraryVersion": (c_char_p,),
    "newDTMSurfaceLib": (c_void_p,),
    "setCurrentDTMSurfaceLib": (c_int, c_uint),
    "setCallBack": (c_int, DrawLineCallback, SurfacePointCallback, SurfaceCallback, RangePointCallback),
    "addDTMSurface": (c_void_p, c_char_p),
    "deleteDTMSurface": (c_int, c_uint),
    "releaseDTMSurface": (c_int, c_uint),
    "getSurface": (c_void_p, c_uint),
    "loadDTMSurface": (c_void_p, c_char_p, c_int),
    "getSurfaceByPath": (None, c_char_p, c_char_p),
    "saveSurface": (c_int, c_uint, c_char_p),
    "exportFileSJW": (c_int, c_uint, c_char_p),
    "deleteSurface": (c_int, c_char_p),
    "previewDTMSurface": (c_int, c_uint, c_double, c_double, c_double, c_double),
    "addSurfacePoint": (c_int, c_uint, *POINT),
    "updateSurfacePoint": (c_int, c_uint, c_uint, *POINT),
    "deleteSurfacePoint": (c_int, c_uint, c_uint),
    "getSurfacePoints": (c_int, c_uint),
    "loadSurfacePointsFile": (c_int, c_uint, c_char_p),
    "freeSurfacePoint": (None, POINTER(SurfacePoint)),
    "checkSurfacePoint": (c_int, c_uint, c_double, c_double, POINTER(c_double)),
    "addRangePoint": (c_int, *POINT),
    "updateRangePoint": (c_int, c_uint, *POINT),
    "deleteRangePoint": (c_int, c_uint),
    "loadRangePointFile": (c_int, c_char_p, POINTER(c_bool), POINTER(c_bool)),
    "saveRangePointFile": (c_int, c_char_p, c_bool, c_bool),
    "getFillCut": (POINTER(FillCutResult), c_char_p, c_double, c_bool),
    "getFillCut2": (POINTER(FillCutResult), c_char_p, c_char_p, c_bool),
    "freeFillCutResult": (None, POINTER(FillCutResult)),
    "exportVolumeReport": (c_int, c_char_p, c_double, c_bool, c_int, c_char_p, c_char_p),
    "exportVolumeReport2": (c_int, c_char_p, c_char_p, c_bool, c_int, c_char_p, c_char_p),
}


CALLBACKS = FUNCTIONS["setCallBack"][1:]


def opened():
    """The shared library; OSError, with what to do, when there is none."""
    path = os.environ.get("ORVIKDTM_LIBRARY") or ctypes.util.find_library("OrvikDTMAlgorithm")
    if path is None:
        raise OSError("the library OrvikDTMAlgorithm is not installed: set ORVIKDTM_LIBRARY to the path of its file")
    try:
        return ctypes.CDLL(path)
    except OSError as reason:
        raise OSError(f"the library OrvikDTMAlgorithm cannot be loaded, see ORVIKDTM_LIBRARY: {reason}") from None


def load():
    """The library, every function of it with its types."""
    library = opened()
    for name, (result, *arguments) in FUNCTIONS.items():
        try:
            function = getattr(library, name)
        except AttributeError:
            raise OSError(f"the library has no function {name}, see ORVIKDTM_LIBRARY: {library._name}") from None
        function.restype, function.argtypes = result, arguments
    register = library.setCallBack

    def set_call_back(*callbacks):
        """As the library's, with None for those that are not wanted; trailing ones may be left out."""
        if len(callbacks) > len(CALLBACKS):
            raise TypeError(f"setCallBack takes {len(CALLBACKS)} callbacks, not {len(callbacks)}")
        given = callbacks + (None,) * (len(CALLBACKS) - len(callbacks))
        return register(*(kind() if one is None else one for kind, one in zip(CALLBACKS, given)))

    library.setCallBack = set_call_back
    return library
