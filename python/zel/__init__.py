"""The object model of a node network for graph editors."""

from zel._zel import *
from zel._zel import _debug
