package com.korvane.ledger;
public class TaxStatement extends Reporting.Statement {
    private int [!taxYear:int];
    @Override public void print() {
        System.out.println([taxYear]);
    }
}
