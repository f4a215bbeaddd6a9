      * COPY MEMBER {DATEPARM}
       01  DATE-PARMS.
           05  DP-FUNCTION              PIC X(2).
           05  DP-DATE-IN               PIC 9(8).
           05  DP-DATE-OUT              PIC 9(8).
           05  DP-DAYS                  PIC S9(5) COMP-3.
           05  DP-RETURN-CODE           PIC 9(2).
